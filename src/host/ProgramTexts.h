#pragma once

#include <string>
#include <string_view>

/// What the program says of itself, in its help and in its manual.
namespace bukorval::host {

inline constexpr const char* kProgramDescription =
    "bukorval: budgets of an accounting suite, on the command line.\n"
    "A budget is a type and a subtype; its cards hold budget, actual, order and forecast values by period.";

inline constexpr const char* kProgramTour =
    "A first tour:\n"
    "  bukorval create demo.db --demo            make a database with a demo company\n"
    "  bukorval budgets -d demo.db               see which budgets it defines\n"
    "  bukorval grid -d demo.db -t 0 -s 01 -y 2025   the cards of one, with totals\n"
    "  bukorval list accounts -d demo.db         what can be named: see bukorval list --help\n"
    "  bukorval COMMAND --help                   what a command does, with an example\n\n"
    "BUKORVAL_DATABASE stands for -d, BUKORVAL_CONNECTION for --connection, NO_COLOR turns colour off.\n"
    "Exit codes: 0 done, 1 refused, 2 wrong command line, 99 run-time error.";

/// A help in the chosen language. Lines that begin with a blank are commands, with words behind four blanks; the others
/// are prose.
std::string translatedHelp(std::string_view text);

}  // namespace bukorval::host
