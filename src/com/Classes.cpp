#include "com/Classes.h"

#include <mutex>

#include "com/BudgetObject.h"
#include "com/ConnectionObject.h"
#include "com/DictionaryObject.h"
#include "com/RecordsetObject.h"
#include "com/SessionObject.h"
#include "com/idl/Identifiers.h"
#include "odbc/Provider.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"

namespace com {
namespace {

/// What the object expects of its host, made known once.
void prepare() {
  static std::once_flag once;
  std::call_once(once, [] {
    sqlite::registerSqlite();
    odbc::registerOdbc();
    suite::registraServiziSuite();
  });
}

Ref<IDispatch> createBudget() {
  prepare();
  return Ref<IDispatch>::adopt(static_cast<IDispatch*>(new BudgetObject));
}

Ref<IDispatch> createConnection() {
  prepare();
  return Ref<IDispatch>::adopt(new ConnectionObject(ado::createConnection()));
}

Ref<IDispatch> createRecordset() {
  return Ref<IDispatch>::adopt(new RecordsetObject(std::make_shared<ado::Recordset>()));
}

Ref<IDispatch> createDictionary() {
  return Ref<IDispatch>::adopt(new DictionaryObject(std::make_shared<ado::Dictionary>()));
}

Ref<IDispatch> createSession() { return Ref<IDispatch>::adopt(new SessionObject); }

constexpr ClassEntry kClasses[] = {
    {BUKORVAL_CLASS, L"BUKORVAL.CLSKORVAL", L"Budget object", createBudget},
    {BUKORVAL_CONNECTION, L"BUKORVAL.Connection", L"Connection to a database of budgets", createConnection},
    {BUKORVAL_RECORDSET, L"BUKORVAL.Recordset", L"Record set without a source", createRecordset},
    {BUKORVAL_DICTIONARY, L"BUKORVAL.Dictionary", L"Dictionary that keeps its order", createDictionary},
    {BUKORVAL_SESSION, L"BUKORVAL.Session", L"Session of the suite on a connection", createSession},
};

}  // namespace

std::span<const ClassEntry> classes() { return kClasses; }

}  // namespace com
