#include "host/standalone/llave.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/file.h>
#include <unistd.h>

#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <istream>
#include <sstream>

#include "host/standalone/archivo_privado.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace autonomo {

namespace {

static_assert(kBytesLlave == crypto_aead_xchacha20poly1305_ietf_KEYBYTES);
constexpr std::size_t kNonce = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kSello = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr std::size_t kHuella = 4;  // bytes
constexpr int kBase64 = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
// Of a mark: beginning, class, ":", fingerprint, ":".
constexpr std::size_t kClase = kInicioMarca.size(), kLugarHuella = kClase + 2,
                      kLugarSello = kLugarHuella + 2 * kHuella + 1;

constexpr std::string_view kOculto = "************", kOcultoCodigo = "***";
constexpr std::size_t kALaVista = 4;

void Prepara() {
  static const bool bien = sodium_init() >= 0;
  if (!bien) throw com::Error(com::error::kBaseDatos, "El cifrado de las tarjetas no está disponible");
}

std::string Hex(const unsigned char* bytes, std::size_t cuantos) {
  std::string s(2 * cuantos + 1, '\0');
  sodium_bin2hex(s.data(), s.size(), bytes, cuantos);
  s.pop_back();
  return s;
}

[[noreturn]] void Rechaza(const std::string& ruta, const char* motivo) {
  throw com::Error(com::error::kSoloLectura, "La llave de las tarjetas (" + ruta + ") " + motivo);
}

[[noreturn]] void RechazaCopia(const std::string& ruta, const std::string& motivo) {
  throw com::Error(com::error::kArgumento, ruta + ": " + motivo);
}

bool Vuelca(int archivo, const std::string& texto) {
  return write(archivo, texto.data(), texto.size()) == static_cast<ssize_t>(texto.size()) && fsync(archivo) == 0;
}

// While it lives no other program writes a key file of the folder; where folders cannot be locked, at least the file
// stays whole.
class TurnoDeCarpeta {
 public:
  explicit TurnoDeCarpeta(const std::filesystem::path& carpeta)
      : carpeta_(open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (carpeta_ >= 0) flock(carpeta_, LOCK_EX);
  }
  ~TurnoDeCarpeta() {
    if (carpeta_ < 0) return;
    fsync(carpeta_);
    close(carpeta_);
  }
  TurnoDeCarpeta(const TurnoDeCarpeta&) = delete;
  TurnoDeCarpeta& operator=(const TurnoDeCarpeta&) = delete;

 private:
  int carpeta_;
};

// The file itself where the name is a link to it; its folder is made.
std::filesystem::path ConCarpeta(const std::string& ruta) {
  std::error_code ec;
  std::filesystem::path real = std::filesystem::canonical(ruta, ec), aqui = std::filesystem::absolute(ruta);
  if (!ec) return real;
  std::filesystem::create_directories(aqui.parent_path(), ec);
  return aqui;
}

}  // namespace

Llave::Llave(const std::array<unsigned char, kBytesLlave>& bytes) : bytes_(bytes) {
  std::array<unsigned char, crypto_generichash_BYTES> resumen{};
  crypto_generichash(resumen.data(), resumen.size(), bytes_.data(), bytes_.size(), nullptr, 0);
  huella_ = Hex(resumen.data(), kHuella);
}

Llave Llave::Nueva() {
  Prepara();
  std::array<unsigned char, kBytesLlave> bytes{};
  randombytes_buf(bytes.data(), bytes.size());
  return Llave(bytes);
}

std::string Llave::RutaUsual() {
  if (const char* ruta = std::getenv("RESERVAS_LLAVE"); ruta != nullptr && *ruta != '\0') return ruta;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
         "/reservas/tarjetas.llave";
}

std::vector<Llave> Llave::Lee(const std::string& ruta) {
  Prepara();
  const auto contenido = LeePrivado(ruta, "la llave de las tarjetas");
  if (!contenido) return {};
  std::istringstream archivo(*contenido);
  std::optional<std::vector<Llave>> llaves = DeTexto(archivo);
  if (!llaves) Rechaza(ruta, "está dañada: ponga en su lugar la copia que guardó");
  return *std::move(llaves);
}

std::optional<std::vector<Llave>> Llave::DeTexto(std::istream& texto) {
  std::vector<Llave> llaves;
  for (std::string linea; std::getline(texto, linea);) {
    const std::string hex = com::Recorta(linea);
    if (hex.empty()) continue;
    std::array<unsigned char, kBytesLlave> bytes{};
    std::size_t cuantos = 0;
    if (sodium_hex2bin(bytes.data(), bytes.size(), hex.data(), hex.size(), nullptr, &cuantos, nullptr) != 0 ||
        cuantos != bytes.size() || hex.size() != 2 * kBytesLlave)
      return std::nullopt;
    llaves.push_back(Llave(bytes));
  }
  return llaves;
}

std::string Llave::Texto(const std::vector<Llave>& llaves) {
  std::string texto;
  for (const Llave& llave : llaves) texto += Hex(llave.bytes_.data(), llave.bytes_.size()) + "\n";
  return texto;
}

// The file appears under its name only when it is whole.
bool Llave::Pone(const std::string& ruta, const std::vector<Llave>& llaves, bool encima) {
  std::string nueva = ruta + ".XXXXXX";
  const int archivo = mkostemp(nueva.data(), O_CLOEXEC);
  if (archivo < 0) return false;
  const bool escrita = Vuelca(archivo, Texto(llaves));
  close(archivo);
  const bool puesta =
      escrita && (encima ? rename(nueva.c_str(), ruta.c_str()) : link(nueva.c_str(), ruta.c_str())) == 0;
  unlink(nueva.c_str());
  return puesta;
}

Llave Llave::Crea(const std::string& ruta) {
  const std::filesystem::path real = ConCarpeta(ruta);
  const TurnoDeCarpeta turno(real.parent_path());
  Llave llave = Nueva();
  if (Pone(real, {llave}, false)) return llave;
  if (const std::vector<Llave> otras = Lee(ruta); !otras.empty()) return otras.front();
  Rechaza(ruta, "no se puede escribir");
}

void Llave::Agrega(const std::string& ruta, const std::vector<Llave>& nuevas) {
  const std::filesystem::path real = ConCarpeta(ruta);
  const TurnoDeCarpeta turno(real.parent_path());
  std::vector<Llave> todas = nuevas;
  std::ranges::copy_if(Lee(ruta), std::back_inserter(todas),
                       [&](const Llave& llave) { return std::ranges::find(nuevas, llave) == nuevas.end(); });
  if (!Pone(real, todas, std::filesystem::exists(real))) Rechaza(ruta, "no se puede escribir");
}

void Llave::Copia(const std::string& ruta, const std::vector<Llave>& llaves) {
  // Made in its place: where such copies go, links may not exist.
  const int archivo = open(ruta.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (archivo < 0) RechazaCopia(ruta, errno == EEXIST ? "ya existe: dé otro nombre" : "no se puede escribir");
  const bool escrita = Vuelca(archivo, Texto(llaves));
  if (close(archivo) == 0 && escrita) return;
  unlink(ruta.c_str());
  RechazaCopia(ruta, "no se puede escribir");
}

std::vector<Llave> Llave::LeeCopia(const std::string& ruta) {
  Prepara();
  std::ifstream archivo(ruta, std::ios::binary);
  if (!archivo) RechazaCopia(ruta, "no se puede leer");
  const std::optional<std::vector<Llave>> llaves = DeTexto(archivo);
  if (!llaves || llaves->empty()) RechazaCopia(ruta, "no es una copia de llaves de tarjetas");
  return *llaves;
}

std::string Llave::Sella(std::string_view texto, Clase clase, bool aLaVista) const {
  const auto clases = static_cast<unsigned char>(clase);
  std::vector<unsigned char> sellado(kNonce + texto.size() + kSello);
  randombytes_buf(sellado.data(), kNonce);
  crypto_aead_xchacha20poly1305_ietf_encrypt(sellado.data() + kNonce, nullptr,
                                             reinterpret_cast<const unsigned char*>(texto.data()), texto.size(),
                                             &clases, 1, nullptr, sellado.data(), bytes_.data());
  std::string base64(sodium_base64_ENCODED_LEN(sellado.size(), kBase64), '\0');
  sodium_bin2base64(base64.data(), base64.size(), sellado.data(), sellado.size(), kBase64);
  base64.pop_back();
  std::string cola;
  if (aLaVista && clase == Clase::Numero) {
    cola = Enmascara(std::string(texto), clase).substr(kOculto.size());
    // Nothing that would end the mark.
    for (char& c : cola) c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '*';
    cola = ":" + cola;
  }
  return std::string(kInicioMarca) + static_cast<char>(clase) + ":" + huella_ + ":" + base64 + cola + "}";
}

std::optional<std::string> Llave::Abre(std::string_view marca) const {
  if (HuellaDeMarca(marca) != huella_) return std::nullopt;
  const auto clase = static_cast<unsigned char>(ClaseDeMarca(marca));
  const std::string_view sello = marca.substr(kLugarSello, marca.size() - kLugarSello - 1),
                         base64 = sello.substr(0, sello.find(':'));
  std::vector<unsigned char> sellado(base64.size());
  std::size_t cuantos = 0;
  if (sodium_base642bin(sellado.data(), sellado.size(), base64.data(), base64.size(), nullptr, &cuantos, nullptr,
                        kBase64) != 0 ||
      cuantos < kNonce + kSello)
    return std::nullopt;
  std::string texto(cuantos - kNonce - kSello, '\0');
  const int rc = crypto_aead_xchacha20poly1305_ietf_decrypt(reinterpret_cast<unsigned char*>(texto.data()), nullptr,
                                                            nullptr, sellado.data() + kNonce, cuantos - kNonce, &clase,
                                                            1, sellado.data(), bytes_.data());
  if (rc != 0) return std::nullopt;
  return texto;
}

std::string_view BuscaMarca(std::string_view texto) {
  for (std::size_t i = texto.find(kInicioMarca); i != std::string_view::npos; i = texto.find(kInicioMarca, i + 1)) {
    const std::size_t fin = texto.find('}', i);
    if (fin == std::string_view::npos) break;
    const std::string_view marca = texto.substr(i, fin + 1 - i);
    const char clase = marca.size() > kLugarSello ? marca[kClase] : '\0';
    if (clase == static_cast<char>(Llave::Clase::Numero) || clase == static_cast<char>(Llave::Clase::Codigo))
      return marca;
  }
  return {};
}

std::string Enmascara(const std::string& texto, Llave::Clase clase) {
  if (clase == Llave::Clase::Codigo) return std::string(kOcultoCodigo);
  const std::string numero = com::Recorta(texto);
  return std::string(kOculto) + (numero.size() > 2 * kALaVista ? numero.substr(numero.size() - kALaVista) : "");
}

bool EsOculto(std::string_view texto) { return texto == kOcultoCodigo || texto.starts_with(kOculto); }

Llave::Clase ClaseDeMarca(std::string_view marca) { return static_cast<Llave::Clase>(marca[kClase]); }

std::string HuellaDeMarca(std::string_view marca) { return std::string(marca.substr(kLugarHuella, 2 * kHuella)); }

}  // namespace autonomo
