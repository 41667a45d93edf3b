#pragma once

#include <span>
#include <string_view>

namespace CLI {
class App;
}

namespace bukorval::host {

class Ambiente;

/// A command of the program. To add one: write ComandoNAME.cpp with a function that returns it, declare that
/// function in Comandi.h and give it its line in Comandi.cpp.
struct Comando {
  std::string_view nome;
  std::string_view descrizione;  ///< one line for the list of commands
  std::string_view esempio;      ///< shown below the command's --help
  /// Declares the command's own options and sets its callback. The shared options (database, format, the
  /// object's properties) are the program's and may stand before or after the command's name.
  void (*prepara)(CLI::App& app, Ambiente& ambiente);
};

std::span<const Comando> comandi();

}  // namespace bukorval::host
