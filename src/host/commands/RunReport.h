#pragma once

#include <map>
#include <string>
#include <vector>

#include "dati/DetailSnapshot.h"
#include "host/output/Table.h"

/// What a run of an elaboration changed, as tables.
namespace bukorval::host {

Table tableOf(const std::vector<dati::AmountChange>& changes, int decimals = 2);

/// How many cards a run took and how many of them it changed, site by site.
class SiteSummary {
 public:
  void addCard(const values::Variant& site) { ++sites_[textOf(site)].cards; }
  /// Counts the cards whose amounts differ, new ones among them.
  void addChanges(const std::vector<dati::AmountChange>& changes);
  Table table() const;

 private:
  struct Counts {
    int cards = 0, changed = 0;
  };
  static std::string textOf(const values::Variant& site);
  std::map<std::string, Counts> sites_;
};

}  // namespace bukorval::host
