#include "object/Interfaccia.h"

#include <algorithm>
#include <unordered_map>

#include "object/Adattatori.h"
#include "values/Text.h"

namespace bukorval {
namespace adattatori {

std::vector<Parametro> leggiParametri(std::string_view testo) {
  std::vector<Parametro> parametri;
  while (!(testo = values::trim(testo)).empty()) {
    auto parola = testo.substr(0, testo.find(' '));
    testo.remove_prefix(parola.size());
    Parametro parametro;
    parametro.opzionale = parola.back() == '?';
    if (parametro.opzionale) parola.remove_suffix(1);
    const auto duePunti = parola.find(':');
    parametro.nome = parola.substr(0, duePunti);
    if (duePunti != parola.npos) parametro.enumerazione = parola.substr(duePunti + 1);
    parametri.push_back(std::move(parametro));
  }
  return parametri;
}

void completaArgomenti(const Membro& membro, std::vector<Variant>& argomenti) {
  const auto& parametri = membro.parametri;
  const auto obbligatorio = [](const Parametro& p) { return !p.opzionale && !p.inOut; };
  const auto ultimo = std::find_if(parametri.rbegin(), parametri.rend(), obbligatorio);
  const auto minimo = static_cast<std::size_t>(parametri.rend() - ultimo);
  if (argomenti.size() < minimo || argomenti.size() > parametri.size())
    throw ErroreArgomento("Wrong number of arguments: " + std::to_string(argomenti.size()) + " for " + firma(membro));
  argomenti.resize(parametri.size());
}

}  // namespace adattatori

const Membro* trovaMembro(std::string_view nome) {
  static const auto perNome = [] {
    std::unordered_map<std::string, const Membro*> indice;
    for (const auto& membro : interfaccia()) indice.emplace(values::foldText(membro.nome), &membro);
    return indice;
  }();
  const auto trovato = perNome.find(values::foldText(nome));
  return trovato == perNome.end() ? nullptr : trovato->second;
}

std::string_view nomeTipo(TipoDato tipo, std::string_view enumerazione) {
  constexpr std::string_view kNomi[] = {"",       "Variant",   "Integer",    "Long",       "Boolean",
                                        "String", "Recordset", "Dictionary", "Connection", "ActiveInterface"};
  return enumerazione.empty() ? kNomi[static_cast<std::size_t>(tipo)] : enumerazione;
}

std::string firma(const Membro& membro) {
  std::string testo = membro.nome;
  if (membro.genere == Genere::Metodo) {
    testo += '(';
    for (const auto& p : membro.parametri) {
      if (&p != &membro.parametri.front()) testo += ", ";
      if (p.opzionale) testo += "Optional ";
      if (p.inOut) testo += "ByRef ";
      testo.append(p.nome).append(" As ").append(nomeTipo(p.tipo, p.enumerazione));
    }
    testo += ')';
  }
  if (membro.tipo != TipoDato::Nessuno) testo.append(" As ").append(nomeTipo(membro.tipo, membro.enumerazione));
  return testo;
}

}  // namespace bukorval
