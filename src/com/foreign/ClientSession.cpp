#include "com/foreign/ClientSession.h"

#include "com/Results.h"
#include "suite/Catalogo.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"

namespace com {

using values::Variant;

Variant ClientSession::optional(const wchar_t* member) const {
  return caller_.has(member) ? caller_.value(member) : Variant();
}

Variant ClientSession::CodiceDitta() const { return caller_.value(L"CodiceDitta"); }
Variant ClientSession::CodicePdcCoGe() const { return optional(L"CodicePdcCoGe"); }
Variant ClientSession::MastroClienti() const { return optional(L"MastroClienti"); }
Variant ClientSession::MastroFornitori() const { return optional(L"MastroFornitori"); }

char ClientSession::SeparatoreDecimale() const {
  const auto sign = optional(L"SeparatoreDecimale");
  return values::isBlank(sign) ? values::kDefaultSeparator : values::toText(sign).front();
}

int ClientSession::StrutturaConti() const {
  constexpr int kUsual = 4;
  const auto structure = optional(L"StrutturaConti");
  return values::isBlank(structure) ? kUsual : values::toInt32(structure);
}

std::vector<int> ClientSession::LunghezzeLivelli() const { return suite::lunghezzeLivelli(StrutturaConti()); }

Variant ClientSession::TestoMessaggio(int numero) const {
  if (!caller_.has(L"TestoMessaggio")) {
    const auto text = suite::testoPredefinito(numero);
    return text.empty() ? Variant::Null() : Variant(text);
  }
  std::vector<OleVariant> arguments;
  arguments.push_back(valueOf(numero));
  return caller_.value(L"TestoMessaggio", std::move(arguments));
}

void ClientSession::MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) {
  if (!caller_.has(L"MostraMessaggio")) return;
  std::vector<OleVariant> arguments;
  arguments.push_back(valueOf(testo));
  arguments.push_back(valueOf(stile));
  arguments.push_back(valueOf(titolo));
  caller_.call(L"MostraMessaggio", std::move(arguments));
}

}  // namespace com
