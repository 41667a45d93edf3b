#include <algorithm>

#include "capi/Descriptions.h"
#include "capi/Guard.h"

using namespace capi;

namespace {

struct Row {
  const bukorval::Membro* member;
  std::string signature;
  const char* description;
};

const std::vector<Row>& rows() {
  static const auto table = [] {
    std::vector<Row> made;
    for (const auto& member : bukorval::interfaccia()) {
      const auto found = std::ranges::find(descriptions(), member.nome, &Description::name);
      made.push_back({&member, bukorval::firma(member), found == descriptions().end() ? "" : found->sentence});
    }
    return made;
  }();
  return table;
}

const Row& rowAt(std::size_t place) {
  if (place >= rows().size()) throw Misuse("There is no such member");
  return rows()[place];
}

}  // namespace

extern "C" {

size_t bukorval_member_count(void) { return bukorval::interfaccia().size(); }

bukorval_code bukorval_member_at(size_t place, bukorval_member* member) {
  return guarded([&] {
    const auto& row = rowAt(place);
    given(member, "member") = {row.member->nome.c_str(),
                               row.signature.c_str(),
                               row.description,
                               row.member->genere == bukorval::Genere::Metodo,
                               static_cast<bool>(row.member->leggi),
                               static_cast<bool>(row.member->scrivi),
                               row.member->parametri.size()};
  });
}

bukorval_code bukorval_parameter_at(size_t member, size_t place, bukorval_parameter* parameter) {
  return guarded([&] {
    const auto& parameters = rowAt(member).member->parametri;
    if (place >= parameters.size()) throw Misuse("There is no such parameter");
    const auto& found = parameters[place];
    // Names of types are literals or texts of the table: both end with a 0.
    given(parameter, "parameter") = {found.nome.c_str(), bukorval::nomeTipo(found.tipo, found.enumerazione).data(),
                                     found.inOut, found.opzionale};
  });
}

}  // extern "C"
