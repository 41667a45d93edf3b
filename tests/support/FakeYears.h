#pragma once

#include "suite/Servizi.h"
#include "support/Test.h"

namespace testing_support {

/// An accounting-year service that knows one year, whatever it is asked for. It keeps the last question and whether
/// it was given a connection.
struct FakeYears : suite::ServizioEsercizi {
  static inline values::Variant first, last;
  static inline bool exists = true, closed = false, broken = false;
  static inline int made = 0, connected = 0;
  static inline std::string lastQuestion;

  /// Takes the place of the service, with a year from day to day (yyyymmdd); without them, one that has no dates.
  static void install(std::string_view from = {}, std::string_view to = {}) {
    year(from, to);
    exists = true;
    closed = broken = false;
    made = connected = 0;
    suite::registraServizio(suite::kServizioEsercizi, [] {
      ++made;
      return std::make_shared<FakeYears>();
    });
  }
  static void year(std::string_view from, std::string_view to) {
    first = from.empty() ? values::Variant() : *values::Date::TryParse(from);
    last = to.empty() ? values::Variant() : *values::Date::TryParse(to);
  }

  void Connessione(ado::ConnectionPtr connection) override { connected += connection ? 1 : 0; }
  bool Esiste(const values::Variant& company, const values::Variant& year, const values::Variant& number) override {
    return asked("Esiste", {company, year, number}) && exists;
  }
  bool EsisteAnno(const values::Variant& company, const values::Variant& year) override {
    return asked("EsisteAnno", {company, year}) && exists;
  }
  void DateInizioFine(const values::Variant& company, const values::Variant& year, const values::Variant& number,
                      values::Variant& from, values::Variant& to) override {
    asked("DateInizioFine", {company, year, number});
    if (first.isEmpty()) return;
    from = first;
    to = last;
  }
  bool Chiuso(const values::Variant& company, const values::Variant& year, const values::Variant& number) override {
    return asked("Chiuso", {company, year, number}) && closed;
  }

 private:
  bool asked(std::string question, std::initializer_list<values::Variant> arguments) {
    if (broken) throw values::Errore("boom");
    for (const auto& argument : arguments) question += " " + values::toPlainText(argument);
    lastQuestion = question;
    return true;
  }
};

}  // namespace testing_support
