#include "elaschede/ContiAnalitici.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/LivelliConto.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

constexpr std::size_t kCodaLunga = 6;
/// Length of the analytic tail by code structure; index 0 is structure 2.
constexpr std::array<std::size_t, 4> kCodaPerStruttura = {5, 4, 4, 2};

std::size_t lunghezzaCoda(const suite::ActiveInterface& sessione) {
  const int struttura = sessione.StrutturaConti();
  return struttura < 2 || struttura > 5 ? 0 : kCodaPerStruttura[static_cast<std::size_t>(struttura - 2)];
}

bool soloZeri(std::string_view testo) {
  return std::all_of(testo.begin(), testo.end(), [](char c) { return c == '0'; });
}

bool analitico(const suite::ActiveInterface& sessione, std::string_view codice, bool flag) {
  const std::size_t coda = std::min(flag ? kCodaLunga : lunghezzaCoda(sessione), codice.size());
  return !soloZeri(codice.substr(codice.size() - coda));
}

std::string ultimoPadre(const suite::ActiveInterface& sessione, std::string_view codice) {
  return std::string(codice.substr(0, ultimoLivello(codice, sessione.LunghezzeLivelli()).fine));
}

}  // namespace

ContiDellaScheda contiDellaScheda(const suite::ActiveInterface& sessione, const values::Variant& conto) {
  const std::string testo = values::toPlainText(conto);
  const std::string_view codice = values::rtrim(testo);
  auto padre = ultimoPadre(sessione, codice);
  if (padre.empty()) return {};
  if (analitico(sessione, codice, false)) return {std::string(codice), true};
  return {std::move(padre), false};
}

bool IsContoAnalitico(Contesto& ctx, const values::Variant& conto, bool flag) {
  return esegui(ctx, "IsContoAnalitico ", false, [&] {
    const std::string testo = values::toPlainText(conto);
    return analitico(ctx.sessione(), values::rtrim(testo), flag);
  });
}

std::string BdgElaSchede_GetUltimoPadrePdc(Contesto& ctx, const values::Variant& conto) {
  return esegui(ctx, "BdgElaSchede_GetUltimoPadrePdc", std::string(), [&] {
    const std::string testo = values::toPlainText(conto);
    return ultimoPadre(ctx.sessione(), values::rtrim(testo));
  });
}

}  // namespace bukorval
