#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// What a budget's cards are analysed by: structure strings, the columns they stand for, and the texts that put
/// descriptions beside codes. A structure string is a sequence of element codes of three characters
/// (BU01_STRUTTURA); a BU60 structure lists the elements that the cards of a budget follow.
/// The contracts of public members stand in object/CLSKORVAL.h.
class Strutture {
 public:
  explicit Strutture(Contesto& ctx) : ctx_(ctx) {}

  std::string GetStruttura(BdgTipo tipo, const values::Variant& sottoTipo) const;
  std::string GetDescrizioneStruttura(const values::Variant& struttura) const;

  /// Never an empty list but after a failure: statements put it after a comma.
  std::string GetElencoCampi(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// The columns that every budget of the type has, whatever its definition.
  static std::string elencoSenzaConnessione(BdgTipo tipo);

  std::string GetStringaCodiciDescrizioni(std::string_view elencoCampi, std::string_view indentazione = {}) const;
  std::string GetStringaJoinCodiciDescrizioni(std::string_view elencoCampi, std::string_view indentazione = {}) const;

  ado::DataTypeEnum GetTipoCampo(std::string_view campo) const;
  values::Variant GetApiceCampiBU65(const values::Variant& nomeCampo) const;

  std::string GetStrutturaBU60(BdgTipo tipo, const values::Variant& sottoTipo) const;
  void GetStrutturaBU60TipoPdcCodicePdc(const values::Variant& codice, BdgTipoPdc& tipoPdc,
                                        values::Variant& codicePdc) const;
  std::string GetDescrizioneStrutturaBU60(const values::Variant& codice) const;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
