#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// What a budget's cards are analysed by: structure strings, the columns they stand for, and the texts that put
/// descriptions beside codes. A structure string is a sequence of element codes of three characters
/// (BU01_STRUTTURA); a BU60 structure lists the elements that the cards of a budget follow.
/// Each answers its default after a failure (99) and without a connection.
class Strutture {
 public:
  explicit Strutture(Contesto& ctx) : ctx_(ctx) {}

  /// The structure string as stored, "" without one. Reads BU01_ANABUDGET.
  std::string GetStruttura(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// The elements of a structure string in words, separated by commas; blank slots are left out. An unknown code
  /// is an error.
  std::string GetDescrizioneStruttura(const values::Variant& struttura) const;

  /// The budget's analysis columns, comma-separated: the site of a budget per site, the columns that its type
  /// brings (card, account), those of the structure in slot order, the flags of type 4. None stands twice; a budget
  /// without any has the card, so that the list is never empty. Reads BU01_ANABUDGET.
  std::string GetElencoCampi(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// The columns that every budget of the type has, whatever its definition.
  static std::string elencoSenzaConnessione(BdgTipo tipo);

  /// Select list of the descriptions of the listed columns as NAME_DESCR, "code - description" cut at 40 characters,
  /// Null where either is. One line for each, begun by the indentation and a comma; "" when there is none.
  /// A code that only another column makes unique (a subfamily, an account) is described when that is listed too.
  std::string GetStringaCodiciDescrizioni(std::string_view elencoCampi, std::string_view indentazione = {}) const;
  /// The outer joins that the select list needs, one indented line for each. They never multiply rows.
  std::string GetStringaJoinCodiciDescrizioni(std::string_view elencoCampi, std::string_view indentazione = {}) const;

  /// Data type of a BU65_TESBUDGET column; an unknown name is an error (99).
  ado::DataTypeEnum GetTipoCampo(std::string_view campo) const;
  /// What stands before and after the column's values in a statement: "'" for text and dates, "" for numbers.
  values::Variant GetApiceCampiBU65(const values::Variant& nomeCampo) const;

  /// Code of the budget's BU60 structure, "" without one. Reads BU01_ANABUDGET.
  std::string GetStrutturaBU60(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// Chart kind and code that a BU60 structure's accounts belong to; 0 and Null for a code that does not exist.
  /// Reads BU60_STRUTTANAG.
  void GetStrutturaBU60TipoPdcCodicePdc(const values::Variant& codice, BdgTipoPdc& tipoPdc,
                                        values::Variant& codicePdc) const;
  /// "" for a code that does not exist. Reads BU60_STRUTTANAG.
  std::string GetDescrizioneStrutturaBU60(const values::Variant& codice) const;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
