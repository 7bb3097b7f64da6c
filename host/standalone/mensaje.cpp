#include "host/standalone/mensaje.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QTime>
#include <algorithm>

#include "host/standalone/palabras.h"

namespace autonomo {

namespace {

constexpr std::string_view kFin = "\r\n";
constexpr std::size_t kLinea = 76;  // letters of a line of base64
// Between the parts; base64 holds no "=" before its end and never this.
constexpr std::string_view kLinde = "=_parte_de_reservas";

std::string Base64(std::string_view bytes) {
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

std::string EnLineas(std::string_view bytes) {
  const std::string todo = Base64(bytes);
  std::string lineas;
  for (std::size_t i = 0; i < todo.size(); i += kLinea) lineas.append(todo, i, kLinea).append(kFin);
  return lineas;
}

// Line ends of a mail, whatever they were.
std::string ConFinesDeLinea(std::string_view texto) {
  std::string s;
  for (const char c : texto) {
    if (c == '\n') s += kFin;
    if (c != '\n' && c != '\r') s += c;
  }
  return s;
}

std::string Parte(std::string_view tipo, std::string_view bytes) {
  std::string s = "Content-Type: ";
  return s.append(tipo).append(kFin).append("Content-Transfer-Encoding: base64\r\n\r\n") + EnLineas(bytes);
}

std::string FechaDeCorreo(com::Fecha f) {
  const com::Civil c = com::ACivil(f);
  return QDateTime(QDate(c.anio, c.mes, c.dia), QTime(c.hora, c.minuto, c.segundo))
      .toString(Qt::RFC2822Date)
      .toStdString();
}

bool EsLlano(std::string_view texto) {
  constexpr std::size_t kCabe = 60;
  return texto.size() <= kCabe && texto.find("=?") == std::string_view::npos &&
         std::ranges::all_of(texto, [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string TextoDeEncabezado(std::string_view texto) {
  std::string limpio(texto);
  std::ranges::replace_if(
      limpio, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  if (EsLlano(limpio)) return limpio;
  constexpr std::size_t kBytes = 42;  // of an encoded word: a line of 78 letters, with the name of the header
  std::string s;
  for (std::size_t i = 0; i < limpio.size();) {
    const std::size_t fin = i + BytesEnteros(std::string_view(limpio).substr(i), kBytes);
    if (!s.empty()) s += "\r\n ";
    s += "=?UTF-8?B?" + Base64(std::string_view(limpio).substr(i, fin - i)) + "?=";
    i = fin;
  }
  return s;
}

std::string ArmaMensaje(const Mensaje& m) {
  const std::string dominio = m.remitente.substr(m.remitente.find('@') + 1);
  // A name is an encoded word or a quoted one.
  std::string nombre = TextoDeEncabezado(m.nombreRemitente);
  if (EsLlano(m.nombreRemitente)) {
    std::erase_if(nombre, [](char c) { return c == '"' || c == '\\'; });
    nombre = '"' + nombre + '"';
  }
  std::string s = "Date: " + FechaDeCorreo(m.fecha) + "\r\nFrom: " + nombre + "\r\n <" + m.remitente + ">\r\nTo: <" +
                  m.para + ">\r\nSubject: " + TextoDeEncabezado(m.asunto) + "\r\nMessage-ID: <" + m.identidad + '@' +
                  dominio + ">\r\nMIME-Version: 1.0\r\n";
  const std::string texto = Parte("text/plain; charset=utf-8", ConFinesDeLinea(m.cuerpo));
  if (m.adjunto.empty()) return s + texto;
  const std::string linde = "--" + std::string(kLinde);
  s += "Content-Type: multipart/mixed; boundary=\"" + std::string(kLinde) + "\"\r\n\r\n" + linde + "\r\n" + texto;
  s += linde + "\r\nContent-Disposition: attachment; filename=\"" + m.nombreAdjunto + "\"\r\n" +
       Parte("application/pdf", m.adjunto) + linde + "--\r\n";
  return s;
}

}  // namespace autonomo
