#pragma once

#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// The progress events of one long step: begins when it is made, counts its units of work, ends once.
class Processo {
 public:
  template <class Passi>
  Processo(Eventi& eventi, std::string_view descrizione, Passi passi) : eventi_(eventi) {
    values::Variant testo(descrizione);
    values::Variant numero(passi);
    if (eventi_.BeginProcess) eventi_.BeginProcess(testo, numero);
  }
  Processo(const Processo&) = delete;
  Processo& operator=(const Processo&) = delete;

  void passo() {
    values::Variant numero(++fatti_);
    if (eventi_.StepProcess) eventi_.StepProcess(numero);
  }
  void fine() {
    if (eventi_.EndProcess) eventi_.EndProcess();
  }

 private:
  Eventi& eventi_;
  int fatti_ = 0;
};

}  // namespace bukorval
