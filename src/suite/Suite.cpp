#include "suite/Suite.h"

#include "suite/Aritmetica.h"
#include "suite/DateTesto.h"
#include "suite/Esercizi.h"
#include "suite/SituazioneMovimenti.h"

namespace suite {

void registraServiziSuite() {
  registraServizio(kServizioDate, [] { return std::make_shared<DateTesto>(); });
  registraServizio(kServizioAritmetico, [] { return std::make_shared<Aritmetica>(); });
  registraServizio(kServizioEsercizi, [] { return std::make_shared<Esercizi>(); });
  registraServizio(kSituazioneContabile, [] { return std::make_shared<SituazioneMovimenti>(); });
}

}  // namespace suite
