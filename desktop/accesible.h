// What assistive tools (screen readers) are told beyond the names of the controls.
#pragma once

#include <QAccessible>
#include <QModelIndex>

class QTableView;
class QWidget;

namespace vista {

// Gives a widget the role it plays on the screen, where its class does not say it: a window, a tool bar, a group of
// fields, one of several options. Before its name is set: a tool that listens keeps what it was told first.
void FijaPapel(QWidget* widget, QAccessible::Role papel);

// Tells that a cell reads differently now (QAccessible::NameChanged). Costs nothing while no assistive tool listens.
void AvisaCelda(QTableView& tabla, const QModelIndex& celda, QAccessible::Event suceso);

}  // namespace vista
