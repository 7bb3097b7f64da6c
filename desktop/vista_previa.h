// The preview of a printed confirmation.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace vista {

// Opens a file in the system's viewer. sinVisor runs, while the owner lives, when there is none.
void AbreEnVisor(const QString& ruta, QObject* duenio, const std::function<void()>& sinVisor);
// The preview of all pages, with buttons to open and save. avisos: remarks shown above it.
std::unique_ptr<QDialog> CreaVistaPrevia(const QString& html, const QString& nombre, const QStringList& avisos,
                                         QWidget* padre);

}  // namespace vista
