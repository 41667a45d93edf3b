#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// Progress of a long step, on standard error: a bar with times on a terminal, plain lines at every tenth
/// elsewhere.
class Avanzamento {
 public:
  Avanzamento();

  void inizia(std::string_view descrizione, std::int64_t passi);
  void passo(std::int64_t fatti);
  void fine();

  /// Follows the object's BeginProcess, StepProcess and EndProcess; it must outlive the operations that raise
  /// them.
  void collega(CLSKORVAL& oggetto);

 private:
  using Orologio = std::chrono::steady_clock;
  void barra(std::int64_t fatti);

  bool terminale_;
  std::string descrizione_;
  std::int64_t passi_ = 0;
  std::int64_t decimi_ = 0;  ///< tenths already told
  Orologio::time_point inizio_, ultimo_;
};

}  // namespace bukorval::host
