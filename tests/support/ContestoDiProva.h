#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frame/Contesto.h"
#include "suite/ActiveInterface.h"
#include "suite/Servizi.h"
#include "support/RecordingConnection.h"
#include "values/Conversion.h"

namespace testing_support {

/// A session whose answers a test sets.
class SessioneFinta : public suite::ActiveInterface {
 public:
  values::Variant ditta = 1, pdc = 1, clienti = "10010000", fornitori = "20010000";
  char separatore = ',';
  int struttura = 4;
  std::vector<int> livelli = {1, 1, 2, 4};
  std::vector<std::string> messaggi;
  std::map<int, std::string> catalogo;

  values::Variant CodiceDitta() const override { return ditta; }
  values::Variant CodicePdcCoGe() const override { return pdc; }
  values::Variant MastroClienti() const override { return clienti; }
  values::Variant MastroFornitori() const override { return fornitori; }
  char SeparatoreDecimale() const override { return separatore; }
  int StrutturaConti() const override { return struttura; }
  std::vector<int> LunghezzeLivelli() const override { return livelli; }
  values::Variant TestoMessaggio(int numero) const override {
    const auto trovato = catalogo.find(numero);
    return trovato == catalogo.end() ? values::Variant::Null() : values::Variant(trovato->second);
  }
  void MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) override {
    messaggi.push_back(std::to_string(stile) + "|" + std::string(titolo) + "|" + std::string(testo));
  }
};

/// Date and arithmetic services that need no suite.
class DateFinte : public suite::ServizioDate {
 public:
  void Data(std::string_view testo) override { data_ = values::Date::TryParse(testo); }
  int CodiceErrore() const override { return data_ ? 0 : 1; }
  std::string DataDB() const override { return data_ ? data_->toSql() : ""; }

 private:
  std::optional<values::Date> data_;
};

class AritmeticaFinta : public suite::ServizioAritmetico {
 public:
  values::Variant Arrotonda(const values::Variant& valore, int, int decimali, int) override {
    return values::toDecimal(valore).rounded(decimali);
  }
};

/// A context on a recording connection, with a session and the two services.
struct ContestoDiProva {
  bukorval::Proprieta prop;
  bukorval::Eventi eventi;
  bukorval::Contesto ctx{prop, eventi};
  std::shared_ptr<RecordingConnection> db = std::make_shared<RecordingConnection>();
  std::shared_ptr<SessioneFinta> sessione = std::make_shared<SessioneFinta>();

  ContestoDiProva() {
    ctx.connessione(db);
    prop.ActiveInterface = sessione;
    ctx.servizioDate = std::make_shared<DateFinte>();
    ctx.servizioAritmetico = std::make_shared<AritmeticaFinta>();
  }
};

}  // namespace testing_support
