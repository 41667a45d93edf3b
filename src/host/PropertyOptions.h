#pragma once

namespace CLI {
class App;
}

namespace bukorval::host {

class Ambiente;

/// Declares the options that every command shares: database, output, and one option for each property of the
/// object that can be written as text, under the property's own name.
void dichiaraOpzioni(CLI::App& app, Ambiente& ambiente);

}  // namespace bukorval::host
