#include "host/Progress.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "host/Terminal.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

constexpr std::int64_t kLarghezza = 30;
constexpr auto kPausa = std::chrono::milliseconds(100);

/// 75 seconds as 1:15.
std::string durata(std::chrono::duration<double> tempo) {
  const auto secondi = std::chrono::duration_cast<std::chrono::seconds>(tempo).count();
  const auto resto = std::to_string(secondi % 60);
  return std::to_string(secondi / 60) + ":" + (resto.size() < 2 ? "0" : "") + resto;
}

}  // namespace

Avanzamento::Avanzamento() : terminale_(eTerminale(stderr)) {}

void Avanzamento::inizia(std::string_view descrizione, std::int64_t passi) {
  descrizione_ = descrizione;
  passi_ = std::max<std::int64_t>(passi, 0);
  decimi_ = 0;
  inizio_ = ultimo_ = Orologio::now();
  if (terminale_) {
    barra(0);
  } else {
    std::cerr << descrizione_ << ": " << passi_ << " steps\n";
  }
}

void Avanzamento::passo(std::int64_t fatti) {
  if (terminale_) {
    if (const auto adesso = Orologio::now(); adesso - ultimo_ >= kPausa || fatti == passi_) {
      ultimo_ = adesso;
      barra(fatti);
    }
    return;
  }
  const auto decimi = passi_ > 0 ? fatti * 10 / passi_ : 0;
  if (decimi > decimi_ && decimi < 10) std::cerr << descrizione_ << ": " << decimi * 10 << "% (" << fatti << ")\n";
  decimi_ = std::max(decimi, decimi_);
}

void Avanzamento::fine() {
  if (terminale_) {
    barra(passi_);
    std::cerr << '\n';
  } else {
    std::cerr << descrizione_ << ": done\n";
  }
}

void Avanzamento::barra(std::int64_t fatti) {
  const auto pieno = passi_ > 0 ? std::min(kLarghezza, fatti * kLarghezza / passi_) : kLarghezza;
  const std::chrono::duration<double> trascorso = Orologio::now() - inizio_;
  std::cerr << "\r\033[K" << descrizione_ << " [" << std::string(static_cast<std::size_t>(pieno), '#')
            << std::string(static_cast<std::size_t>(kLarghezza - pieno), '.') << "] " << fatti << "/" << passi_ << "  "
            << durata(trascorso) << " elapsed";
  if (fatti > 0 && fatti < passi_) {
    std::cerr << ", " << durata(trascorso * static_cast<double>(passi_ - fatti) / static_cast<double>(fatti))
              << " left";
  }
  std::cerr << std::flush;
}

void Avanzamento::collega(CLSKORVAL& oggetto) {
  oggetto.eventi.BeginProcess = [this](values::Variant& descrizione, values::Variant& passi) {
    inizia(values::toText(descrizione), values::toInt64(passi));
  };
  oggetto.eventi.StepProcess = [this](values::Variant& numero) { passo(values::toInt64(numero)); };
  oggetto.eventi.EndProcess = [this] { fine(); };
}

}  // namespace bukorval::host
