#pragma once

#include <memory>
#include <string>

#include "suite/Servizi.h"
#include "values/Conversion.h"

namespace definition_tests {

/// An accounting-year service that knows one year (of company 1), whatever the progressive it is asked for.
/// It keeps the last question and whether it was given a connection.
struct EserciziFinti : suite::ServizioEsercizi {
  static inline values::Variant inizio, fine;
  static inline bool esiste = true, chiuso = false, guasto = false;
  static inline int creati = 0, conConnessione = 0;
  static inline std::string ultimaDomanda;

  static void registra() {
    inizio = fine = values::Variant();
    esiste = true;
    chiuso = guasto = false;
    creati = conConnessione = 0;
    suite::registraServizio(suite::kServizioEsercizi, [] {
      ++creati;
      return std::make_shared<EserciziFinti>();
    });
  }
  static void anno(std::string_view da, std::string_view a) {
    inizio = *values::Date::TryParse(da);
    fine = *values::Date::TryParse(a);
  }

  void Connessione(ado::ConnectionPtr connessione) override { conConnessione += connessione ? 1 : 0; }
  bool Esiste(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo) override {
    return domanda("Esiste", {ditta, anno, progressivo}) && esiste;
  }
  bool EsisteAnno(const values::Variant& ditta, const values::Variant& anno) override {
    return domanda("EsisteAnno", {ditta, anno}) && esiste;
  }
  void DateInizioFine(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo,
                      values::Variant& da, values::Variant& a) override {
    domanda("DateInizioFine", {ditta, anno, progressivo});
    if (inizio.isEmpty()) return;
    da = inizio;
    a = fine;
  }
  bool Chiuso(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo) override {
    return domanda("Chiuso", {ditta, anno, progressivo}) && chiuso;
  }

 private:
  bool domanda(std::string testo, std::initializer_list<values::Variant> argomenti) {
    if (guasto) throw values::Errore("boom");
    for (const auto& argomento : argomenti) testo += " " + values::toPlainText(argomento);
    ultimaDomanda = testo;
    return true;
  }
};

}  // namespace definition_tests
