#include <chrono>
#include <cstdio>

#include "com/Results.h"
#include "com/foreign/Caller.h"
#include "demo/DemoAzienda.h"
#include "object/CLSKORVAL.h"
#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"
#include "values/Conversion.h"

/// A grid of 2,000 cards, made and read field by field: by a C++ client, and by a late-bound one of the component.
namespace {

using com::Caller, com::OleVariant, com::Ref;
using Clock = std::chrono::steady_clock;

constexpr const char* kFile = "com_speed.db";
constexpr const char* kConnection = "Provider=SQLite;Data Source=com_speed.db;Create=True";
constexpr int kCards = 2000, kRuns = 5;

ado::ConnectionPtr company() {
  sqlite::registerSqlite();
  suite::registraServiziSuite();
  std::remove(kFile);
  auto connection = ado::createConnection();
  connection->ConnectionString = kConnection;
  connection->Open();
  schema::create(*connection);
  demo::creaDemo(*connection);
  connection->BeginTrans();
  for (int i = 0; i < kCards; ++i) {
    const auto number = std::to_string(i);
    connection->Execute(
        "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
        " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_CODICE_CG31)"
        " VALUES (1, 4, '02', 2025, 1, 0, 'S" +
        number + "', 1)");
    connection->Execute(
        "INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO)"
        " SELECT MAX(BU65_ID), 0, 1, " +
        number + " FROM BU65_TESBUDGET WITH (NOLOCK)");
  }
  connection->CommitTrans();
  return connection;
}

struct Selection {
  const char* name;
  values::Variant value;
};
const Selection kSelection[] = {{"CodiceDitta", 1},      {"TipoBudget", 4},           {"SottoTipoBudget", "02"},
                                {"AnnoEsercizio", 2025}, {"ProgressivoEsercizio", 1}, {"CodiceSede", 1},
                                {"BdgTipoScheda", 0}};

/// Milliseconds of the fastest of some runs; `read` gives how many values it has read.
template <class Read>
double fastest(Read read, std::size_t& count) {
  double best = 1e9;
  for (int i = 0; i < kRuns; ++i) {
    const auto start = Clock::now();
    count = read();
    best = std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  return best;
}

std::size_t readDirectly(bukorval::CLSKORVAL& budget, const std::vector<std::string>& names) {
  std::size_t count = 0;
  const auto grid = budget.RecordSetBudget();
  for (; !grid->Eof(); grid->MoveNext())
    for (const auto& name : names) count += (*grid)[name].Value().isEmpty() ? 0 : 1;
  return count;
}

OleVariant invoke(IDispatch* object, DISPID id, VARIANT* argument) {
  DISPPARAMS parameters{argument, nullptr, argument ? 1U : 0U, 0};
  OleVariant result;
  object->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
  return result;
}

DISPID idOf(IDispatch* object, const wchar_t* name) {
  DISPID id = 0;
  auto* text = const_cast<wchar_t*>(name);
  object->GetIDsOfNames(IID_NULL, &text, 1, 0, &id);
  return id;
}

/// As a script does: the field by its name, then its value, each a call of its own.
std::size_t readLate(const Caller& budget, std::vector<OleVariant>& names) {
  std::size_t count = 0;
  const auto grid = budget.object(L"RecordSetBudget");
  const auto end = idOf(grid.get(), L"EOF"), next = idOf(grid.get(), L"MoveNext");
  for (; V_BOOL(&invoke(grid.get(), end, nullptr).get()) == VARIANT_FALSE; invoke(grid.get(), next, nullptr)) {
    for (auto& name : names) {
      const auto field = invoke(grid.get(), DISPID_VALUE, &name.get());
      const auto value = invoke(V_DISPATCH(&field.get()), DISPID_VALUE, nullptr);
      count += V_VT(&value.get()) == VT_EMPTY ? 0 : 1;
    }
  }
  return count;
}

Caller create(const wchar_t* name) {
  CLSID id{};
  Ref<IDispatch> object;
  ::CLSIDFromProgID(name, &id);
  if (FAILED(
          ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.out()))))
    throw values::Errore("The component is not registered");
  return Caller(std::move(object));
}

std::vector<OleVariant> one(OleVariant value) {
  std::vector<OleVariant> list;
  list.push_back(std::move(value));
  return list;
}

}  // namespace

int main() try {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto connection = company();
  bukorval::CLSKORVAL direct;
  direct.Connessione(connection);
  direct.ActiveInterface = std::make_shared<suite::Sessione>(connection);
  const auto lateConnection = create(L"BUKORVAL.Connection"), session = create(L"BUKORVAL.Session"),
             late = create(L"BUKORVAL.CLSKORVAL");
  lateConnection.call(L"Open", one(com::valueOf(kConnection)));
  session.call(L"Open", one(com::dispatchValue(lateConnection.ref())));
  late.put(L"Connessione", com::dispatchValue(lateConnection.ref()));
  late.put(L"ActiveInterface", com::dispatchValue(session.ref()));
  for (const auto& [name, value] : kSelection) {
    bukorval::trovaMembro(name)->scrivi(direct, value);
    late.put(std::wstring(name, name + std::string_view(name).size()).c_str(), com::fromValue(value));
  }
  std::vector<std::string> names;
  std::vector<OleVariant> wideNames;
  const auto grid = direct.RecordSetBudget();
  for (std::size_t i = 0; i < grid->Fields().Count(); ++i) {
    names.push_back(grid->Fields().Item(i).Name());
    wideNames.push_back(com::valueOf(names.back()));
  }
  std::size_t readHere = 0, readThere = 0;
  const auto here = fastest([&] { return readDirectly(direct, names); }, readHere);
  const auto there = fastest([&] { return readLate(late, wideNames); }, readThere);
  std::printf("%d cards, %zu fields: C++ %.1f ms, late-bound %.1f ms, ratio %.1f\n", kCards, names.size(), here, there,
              there / here);
  return readHere == readThere && readHere > kCards ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
