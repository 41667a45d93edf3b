#include "dati/import/CsvReader.h"

#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

constexpr int kFine = std::istream::traits_type::eof();

void saltaBom(std::istream& ingresso) {
  for (const char atteso : {'\xEF', '\xBB', '\xBF'}) {
    if (ingresso.peek() != std::istream::traits_type::to_int_type(atteso)) return;
    ingresso.get();
  }
}

}  // namespace

LettoreCsv::LettoreCsv(std::istream& ingresso) : ingresso_(ingresso) {
  saltaBom(ingresso_);
  if (!leggi(intestazione_)) return;
  const auto& primo = intestazione_.front();
  if (intestazione_.size() == 1 && primo.find(';') != std::string::npos) {
    separatore_ = ';';
    std::vector<std::string> campi(1);
    for (const char c : primo) {
      if (c == ';') {
        campi.emplace_back();
      } else {
        campi.back() += c;
      }
    }
    intestazione_ = std::move(campi);
  }
  for (auto& nome : intestazione_) nome = std::string(values::trim(nome));
}

bool LettoreCsv::prossima(std::vector<std::string>& campi) { return leggi(campi); }

bool LettoreCsv::leggi(std::vector<std::string>& campi) {
  while (ingresso_.peek() != kFine) {
    inizioRecord_ = lineaCorrente_;
    campi.clear();
    do {
      campi.emplace_back();
    } while (leggiCampo(campi.back()) != '\n');
    if (campi.size() > 1 || !values::trim(campi.front()).empty()) return true;
  }
  return false;
}

char LettoreCsv::leggiCampo(std::string& campo) {
  if (ingresso_.peek() == '"') leggiCitato(campo);
  for (int c = ingresso_.get(); c != kFine; c = ingresso_.get()) {
    if (c == separatore_) return separatore_;
    if (c == '\n') {
      ++lineaCorrente_;
      if (campo.ends_with('\r')) campo.pop_back();
      return '\n';
    }
    campo += static_cast<char>(c);
  }
  return '\n';
}

void LettoreCsv::leggiCitato(std::string& campo) {
  ingresso_.get();
  for (int c = ingresso_.get(); c != kFine; c = ingresso_.get()) {
    if (c == '\n') ++lineaCorrente_;
    if (c == '"') {
      if (ingresso_.peek() != '"') return;
      ingresso_.get();
    }
    campo += static_cast<char>(c);
  }
  throw values::Errore("line " + std::to_string(inizioRecord_) + ": a quoted field is never closed");
}

}  // namespace bukorval::host
