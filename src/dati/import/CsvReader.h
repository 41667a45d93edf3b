#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace bukorval::host {

/// Reads comma-separated text as spreadsheets write it: quoted fields with doubled quotes and line breaks
/// inside, LF or CRLF, an optional byte-order mark. A header line that holds semicolons and no comma makes
/// the semicolon the separator of the whole file. Lines that hold nothing are skipped.
class LettoreCsv {
 public:
  explicit LettoreCsv(std::istream& ingresso);

  /// The fields of the header line, blanks trimmed.
  const std::vector<std::string>& intestazione() const { return intestazione_; }
  /// False at the end. A quoted field that is never closed throws values::Errore.
  bool prossima(std::vector<std::string>& campi);
  /// Number of the line (from 1) on which the last record began.
  std::size_t linea() const { return inizioRecord_; }

 private:
  bool leggi(std::vector<std::string>& campi);
  /// Reads one field; the character that ended it, '\n' also at the end of the text.
  char leggiCampo(std::string& campo);
  void leggiCitato(std::string& campo);

  std::istream& ingresso_;
  char separatore_ = ',';
  std::size_t lineaCorrente_ = 1;
  std::size_t inizioRecord_ = 0;
  std::vector<std::string> intestazione_;
};

}  // namespace bukorval::host
