#include "suite/Catalogo.h"

namespace suite {
namespace {

struct Messaggio {
  int numero;
  std::string_view testo;
};

constexpr Messaggio kMessaggi[] = {
    {28193, "Gennaio"},  {26677, "Febbraio"}, {36998, "Marzo"},   {7054, "Aprile"},     {36596, "Maggio"},
    {29285, "Giugno"},   {36373, "Luglio"},   {5820, "Agosto"},   {52092, "Settembre"}, {42872, "Ottobre"},
    {40573, "Novembre"}, {22569, "Dicembre"}, {8824, "Bimestre"}, {58700, "Trimestre"}, {46968, "Quadrimestre"},
    {51899, "Semestre"}, {6537, "Anno"},
};

}  // namespace

std::string_view testoPredefinito(int numero) {
  for (const auto& messaggio : kMessaggi)
    if (messaggio.numero == numero) return messaggio.testo;
  return {};
}

}  // namespace suite
