#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "ado/Types.h"

/// The columns of BU65_TESBUDGET: their types, where their codes are described, and the elements of a budget's
/// structure that stand for them. Field lists, grids, description texts and value quoting all read these tables.
namespace bukorval {

/// A column of a description table and what it must be equal to: a BU65 column or a literal.
struct Chiave {
  std::string_view campo, valore;
};

/// Where a company keeps descriptions of its own.
struct DescrizioneDiDitta {
  std::string_view tabella, campo;
  std::string_view codice;
  Chiave altre[2] = {};
};

/// Where a code is described.
struct Descrizione {
  std::string_view tabella, campo;
  std::string_view codice;          ///< the column of that table that holds the code itself
  Chiave altre[2] = {};             ///< what else identifies a row
  std::string_view alias = {};      ///< tells apart the joins of a table that describes several columns
  DescrizioneDiDitta diDitta = {};  ///< stands where the company has one
};

struct Colonna {
  std::string_view nome;
  ado::DataTypeEnum tipo;
  int lunghezza;  ///< text: characters; number: digits, none after the point
  Descrizione descrizione;

  bool haDescrizione() const { return !descrizione.tabella.empty(); }
  bool isTesto() const { return tipo == ado::adChar || tipo == ado::adVarWChar; }
  bool isNumero() const { return tipo == ado::adDecimal || tipo == ado::adSmallInt; }
};

/// An element of a structure: its code of three characters and the columns it stands for.
struct Elemento {
  std::string_view codice, descrizione;
  std::array<std::string_view, 2> colonne;  ///< the second may be ""
};

/// Characters of a description in the grid, the code before it included.
inline constexpr int kLarghezzaDescrizione = 40;

std::span<const Colonna> colonneBU65();
std::span<const Elemento> elementiStruttura();

/// A column by name, without regard to case and blanks around; throws for a name that is none.
const Colonna& colonnaBU65(std::string_view nome);
/// Throws for a code that is none.
const Elemento& elementoStruttura(std::string_view codice);
/// The columns of a comma-separated list of names.
std::vector<const Colonna*> colonneElenco(std::string_view elencoCampi);

}  // namespace bukorval
