#include "host/standalone/smtp.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/com/error.h"

namespace autonomo {

namespace {

constexpr long kSegundos = 120, kSegundosConexion = 20;
constexpr std::size_t kLargoRespuesta = 160;  // bytes of the server's words that are kept

struct Cierra {
  void operator()(CURL* c) const { curl_easy_cleanup(c); }
  void operator()(curl_slist* l) const { curl_slist_free_all(l); }
};

// How far a try came.
enum class Paso {
  Saludo,     // greeting, encryption and login
  Remitente,  // "MAIL"
  Buzon,      // "RCPT" and "DATA": from here on the server speaks of this mail
  Despedida   // "QUIT": what is answered to it tells nothing
};

// What goes out, and what the server says.
struct Charla {
  std::string_view resta;  // of the message
  Paso paso = Paso::Saludo;
  std::string respuesta;      // last line of the server
  Paso decia = Paso::Saludo;  // the step that it answered
};

int OyeOrden(CURL* /*c*/, curl_infotype tipo, char* linea, std::size_t cuantos, void* charla) {
  constexpr std::pair<std::string_view, Paso> kOrdenes[] = {
      {"MAIL ", Paso::Remitente}, {"RCPT ", Paso::Buzon}, {"DATA\r", Paso::Buzon}, {"QUIT\r", Paso::Despedida}};
  for (const auto& [orden, paso] : kOrdenes) {
    if (tipo == CURLINFO_HEADER_OUT && std::string_view(linea, cuantos).starts_with(orden))
      static_cast<Charla*>(charla)->paso = paso;
  }
  return 0;
}

std::size_t DaMensaje(char* destino, std::size_t uno, std::size_t cuantos, void* charla) {
  auto& resta = static_cast<Charla*>(charla)->resta;
  const std::size_t n = std::min(uno * cuantos, resta.size());
  std::memcpy(destino, resta.data(), n);
  resta.remove_prefix(n);
  return n;
}

std::size_t OyeRespuesta(char* linea, std::size_t uno, std::size_t cuantos, void* suya) {
  Charla& charla = *static_cast<Charla*>(suya);
  if (charla.paso == Paso::Despedida) return uno * cuantos;
  charla.decia = charla.paso;
  std::string& respuesta = charla.respuesta;
  respuesta.clear();
  for (const char c : std::string_view(linea, std::min(uno * cuantos, kLargoRespuesta))) {
    respuesta += c >= ' ' && c <= '~' ? c : ' ';
  }
  while (!respuesta.empty() && respuesta.back() == ' ') respuesta.pop_back();
  return uno * cuantos;
}

// For whoever gives support: the library's words are English.
std::string Codigo(CURLcode codigo) { return " (código " + std::to_string(codigo) + ")"; }

void Exige(CURLcode codigo) {
  if (codigo != CURLE_OK)
    throw com::Error(com::error::kArgumento, codigo == CURLE_OUT_OF_MEMORY
                                                 ? "No hay memoria para preparar el envío"
                                                 : "No se puede preparar el envío" + Codigo(codigo));
}

std::string ErrorDeCertificado(CURL* c) {
  constexpr long kAunNo = 9, kVencido = 10, kNombre = 62;  // the verifier's own numbers
  long motivo = 0;
  curl_easy_getinfo(c, CURLINFO_SSL_VERIFYRESULT, &motivo);
  const std::string texto = "El certificado del servidor de correo no es de fiar: ";
  if (motivo == kAunNo) return texto + "todavía no es válido; revise la fecha de este equipo";
  if (motivo == kVencido) return texto + "ya venció";
  if (motivo == kNombre || motivo == 0) return texto + "es de otro nombre";
  return texto + "no lo firma nadie en quien se confíe";
}

std::string ErrorDeConexion(CURL* c, CURLcode codigo, const ServidorCorreo& servidor) {
  const std::string donde = servidor.servidor + ":" + std::to_string(servidor.puerto);
  switch (codigo) {
    case CURLE_COULDNT_RESOLVE_HOST:
      return "No se encuentra el servidor de correo " + servidor.servidor;
    case CURLE_COULDNT_CONNECT:
      return "El servidor de correo " + donde + " no contesta";
    case CURLE_OPERATION_TIMEDOUT:
      return "El servidor de correo " + donde + " tardó demasiado";
    case CURLE_LOGIN_DENIED:
      return "El servidor de correo no acepta el usuario o la contraseña";
    case CURLE_PEER_FAILED_VERIFICATION:
      return ErrorDeCertificado(c);
    case CURLE_SSL_CACERT_BADFILE:
      return "No se puede leer el archivo de certificados " + servidor.certificados;
    case CURLE_USE_SSL_FAILED:
      return "El servidor de correo no ofrece cifrado";
    case CURLE_SSL_CONNECT_ERROR:
      return "El servidor de correo no se entiende con TLS";
    case CURLE_WEIRD_SERVER_REPLY:
      return "El servidor de correo no contesta como uno de correo" + Codigo(codigo);
    default:
      return "Se cortó la conexión con el servidor de correo" + Codigo(codigo);
  }
}

// What an answer of failure means. Who takes one mail's trouble for the server's keeps all others back.
Desenlace DesenlaceDe(long respuesta, Paso decia, bool entregado) {
  constexpr long kCierra = 421, kDefinitivas = 500, kDelBuzon = 550, kMuyGrande = 552, kFinDelBuzon = 559;
  if (entregado) return respuesta >= kDefinitivas ? Desenlace::Nunca : Desenlace::Luego;
  if (decia == Paso::Remitente && respuesta == kMuyGrande) return Desenlace::Nunca;
  if (decia != Paso::Buzon || respuesta == kCierra) return Desenlace::SinServidor;
  if (respuesta < kDefinitivas) return Desenlace::Luego;
  return respuesta >= kDelBuzon && respuesta <= kFinDelBuzon ? Desenlace::Nunca : Desenlace::SinServidor;
}

ResultadoEnvio Resultado(CURL* c, CURLcode codigo, const Charla& charla, const ServidorCorreo& servidor) {
  if (codigo == CURLE_OK) return {Desenlace::Enviado, ""};
  constexpr long kFallas = 400;
  long respuesta = 0;
  curl_easy_getinfo(c, CURLINFO_RESPONSE_CODE, &respuesta);
  const bool entregado = charla.resta.empty();  // the whole message was handed over
  if (codigo == CURLE_LOGIN_DENIED || respuesta < kFallas) {
    const std::string error = ErrorDeConexion(c, codigo, servidor);
    return {entregado ? Desenlace::Incierto : Desenlace::SinServidor, error};
  }
  return {DesenlaceDe(respuesta, charla.decia, entregado), "El servidor de correo contestó «" + charla.respuesta + "»"};
}

std::string Direccion(const ServidorCorreo& s) {
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
  const std::string nombre = s.servidor.find(':') == std::string::npos ? s.servidor : "[" + s.servidor + "]";
  char* texto = nullptr;
  const bool bien = url != nullptr &&
                    curl_url_set(url.get(), CURLUPART_SCHEME,
                                 s.cifrado == ServidorCorreo::Cifrado::Tls ? "smtps" : "smtp", 0) == CURLUE_OK &&
                    curl_url_set(url.get(), CURLUPART_HOST, nombre.c_str(), 0) == CURLUE_OK &&
                    curl_url_set(url.get(), CURLUPART_PORT, std::to_string(s.puerto).c_str(), 0) == CURLUE_OK &&
                    curl_url_get(url.get(), CURLUPART_URL, &texto, 0) == CURLUE_OK;
  const std::unique_ptr<char, decltype(&curl_free)> dueno(texto, curl_free);
  if (!bien) throw com::Error(com::error::kArgumento, "El servidor de correo «" + s.servidor + "» no es un nombre");
  return texto;
}

void Prepara(CURL* c, const ServidorCorreo& s, curl_slist* destinos, Charla& charla) {
  if (c == nullptr || destinos == nullptr) Exige(CURLE_OUT_OF_MEMORY);
  const bool cifra = s.cifrado != ServidorCorreo::Cifrado::Ninguno;
  const long exigido = s.cifrado == ServidorCorreo::Cifrado::SiSePuede ? CURLUSESSL_TRY : CURLUSESSL_ALL;
  Exige(curl_easy_setopt(c, CURLOPT_URL, Direccion(s).c_str()));
  curl_easy_setopt(c, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  curl_easy_setopt(c, CURLOPT_PROXY, "");
  curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(c, CURLOPT_TIMEOUT, kSegundos);
  curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, kSegundosConexion);
  Exige(curl_easy_setopt(c, CURLOPT_USE_SSL, cifra ? exigido : static_cast<long>(CURLUSESSL_NONE)));
  curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, s.verifica ? 1L : 0L);
  curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, s.verifica ? 2L : 0L);
  if (!s.certificados.empty()) Exige(curl_easy_setopt(c, CURLOPT_CAINFO, s.certificados.c_str()));
  if (!s.usuario.empty()) {
    Exige(curl_easy_setopt(c, CURLOPT_USERNAME, s.usuario.c_str()));
    Exige(curl_easy_setopt(c, CURLOPT_PASSWORD, s.contrasena.c_str()));
  }
  Exige(curl_easy_setopt(c, CURLOPT_MAIL_FROM, ("<" + s.remitente + ">").c_str()));
  Exige(curl_easy_setopt(c, CURLOPT_MAIL_RCPT, destinos));
  curl_easy_setopt(c, CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(c, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(charla.resta.size()));
  curl_easy_setopt(c, CURLOPT_READFUNCTION, DaMensaje);
  curl_easy_setopt(c, CURLOPT_READDATA, &charla);
  curl_easy_setopt(c, CURLOPT_HEADERFUNCTION, OyeRespuesta);
  curl_easy_setopt(c, CURLOPT_HEADERDATA, &charla);
  curl_easy_setopt(c, CURLOPT_VERBOSE, 1L);  // calls OyeOrden, and says nothing itself
  curl_easy_setopt(c, CURLOPT_DEBUGFUNCTION, OyeOrden);
  curl_easy_setopt(c, CURLOPT_DEBUGDATA, &charla);
}

}  // namespace

ResultadoEnvio EntregaCorreo(const ServidorCorreo& s, const std::string& para, const std::string& mensaje) {
  static const CURLcode biblioteca = curl_global_init(CURL_GLOBAL_DEFAULT);
  Charla charla;
  charla.resta = mensaje;
  const std::unique_ptr<curl_slist, Cierra> destinos(curl_slist_append(nullptr, ("<" + para + ">").c_str()));
  const std::unique_ptr<CURL, Cierra> c(biblioteca == CURLE_OK ? curl_easy_init() : nullptr);
  try {
    Prepara(c.get(), s, destinos.get(), charla);
  } catch (const com::Error& e) {
    return {Desenlace::SinServidor, e.Descripcion()};
  }
  const CURLcode codigo = curl_easy_perform(c.get());
  return Resultado(c.get(), codigo, charla, s);
}

}  // namespace autonomo
