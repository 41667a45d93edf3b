#include "com/BudgetObject.h"

#include <algorithm>

#include "com/Failures.h"
#include "com/Objects.h"
#include "com/Registration.h"
#include "com/TypeLibrary.h"
#include "com/VariantValue.h"
#include "com/foreign/ClientDictionary.h"
#include "com/foreign/ClientRecordset.h"
#include "com/idl/Identifiers.h"
#include "com/idl/MemberId.h"

namespace com {
namespace {

using bukorval::Genere, bukorval::Membro, bukorval::Parametro, bukorval::TipoDato;
using values::Variant;

constexpr IID kDispatch = BUKORVAL_DISPATCH;
constexpr CLSID kClass = BUKORVAL_CLASS;

std::wstring wideName(const std::string& name) { return {name.begin(), name.end()}; }

MemberInfo infoOf(const Membro& member) {
  MemberInfo info{wideName(member.nome), memberId(member), true, static_cast<bool>(member.scrivi), 0, {}};
  if (member.genere == Genere::Proprieta) {
    info.reads = static_cast<bool>(member.leggi);
    info.givesObject = info.reads && isObjectType(member.tipo);
  }
  for (const auto& parameter : member.parametri) {
    info.parameters.push_back(wideName(parameter.nome));
    if (!parameter.opzionale && !parameter.inOut) info.least = info.parameters.size();
  }
  return info;
}

Variant argumentFor(TipoDato type, const VARIANT& value) {
  return isObjectType(type) ? toObject(value, type) : toValue(value);
}

/// Which argument an error text names: it begins with the parameter's name and a colon.
int namedArgument(const Membro& member, std::string_view text) {
  const auto found = std::ranges::find_if(
      member.parametri, [&](const Parametro& parameter) { return text.starts_with(parameter.nome + ":"); });
  return found == member.parametri.end() ? -1 : static_cast<int>(found - member.parametri.begin());
}

}  // namespace

BudgetObject::BudgetObject() { connectEvents(); }
BudgetObject::~BudgetObject() = default;

const MemberTable& BudgetObject::members() const {
  static const MemberTable table = [] {
    std::vector<MemberInfo> infos;
    for (const auto& member : bukorval::interfaccia()) infos.push_back(infoOf(member));
    return MemberTable(std::move(infos));
  }();
  return table;
}

OleVariant BudgetObject::invoke(std::size_t place, WORD flags, Arguments& arguments) {
  const auto& member = bukorval::interfaccia()[place];
  if (member.genere == Genere::Metodo) return call(member, arguments);
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) return read(member);
  write(member, arguments.assigned());
  return {};
}

OleVariant BudgetObject::read(const Membro& member) { return fromValue(handedOut(member, member.leggi(budget_))); }

void BudgetObject::write(const Membro& member, const VARIANT& value) try {
  const auto converted = argumentFor(member.tipo, value);
  member.scrivi(budget_, converted);
  hasClients_ =
      hasClients_ || bukorval::oggetto<ClientRecordset>(converted) || bukorval::oggetto<ClientDictionary>(converted);
} catch (const bukorval::ErroreArgomento&) {
  throw CallFailure{DISP_E_TYPEMISMATCH, 0};
}

OleVariant BudgetObject::call(const Membro& member, Arguments& arguments) try {
  if (hasClients_) readClients();
  std::vector<Variant> values;
  for (std::size_t i = 0; i < arguments.count(); ++i) {
    const auto type = member.parametri[i].tipo;
    values.push_back(isObjectType(type) && arguments.has(i) ? toObject(*arguments.at(i), type) : arguments.value(i));
  }
  auto result = member.chiama(budget_, values);
  for (std::size_t i = 0; i < arguments.count(); ++i) {
    if (const auto dictionary = bukorval::oggetto<ClientDictionary>(values[i])) dictionary->writeBack();
    if (!member.parametri[i].inOut || !arguments.has(i)) continue;
    const auto outcome = writeBack(*arguments.at(i), fromValue(values[i]));
    if (FAILED(outcome)) throw CallFailure{outcome, static_cast<int>(i)};
  }
  return fromValue(handedOut(member, std::move(result)));
} catch (const bukorval::ErroreArgomento& error) {
  throw CallFailure{DISP_E_TYPEMISMATCH, namedArgument(member, error.what())};
}

void BudgetObject::readClients() {
  for (const auto& member : bukorval::interfaccia()) {
    if (member.genere == Genere::Metodo || !member.leggi) continue;
    if (member.tipo != TipoDato::Recordset && member.tipo != TipoDato::Dictionary) continue;
    const auto value = member.leggi(budget_);
    if (const auto dictionary = bukorval::oggetto<ClientDictionary>(value)) dictionary->read();
    if (const auto set = bukorval::oggetto<ClientRecordset>(value))
      member.scrivi(budget_,
                    std::shared_ptr<values::Object>(std::make_shared<ClientRecordset>(Ref<IDispatch>(set->client()))));
  }
}

Variant BudgetObject::handedOut(const Membro& member, Variant set) {
  if (member.tipo != TipoDato::Recordset || clientRecordsetClass().empty()) return set;
  const auto rows = bukorval::oggetto<ado::Recordset>(set);
  if (!rows || dynamic_cast<ClientObject*>(rows.get())) return set;
  const Caller theirs(createClientRecordset());
  fillRecordset(theirs, *rows);
  Variant client = std::shared_ptr<values::Object>(std::make_shared<ClientRecordset>(theirs.ref()));
  if (member.genere == Genere::Metodo) return client;
  // From now on the property is the set that the client holds.
  member.scrivi(budget_, client);
  hasClients_ = true;
  return client;
}

void BudgetObject::connectEvents() {
  budget_.eventi.BeginProcess = [this](Variant& description, Variant& steps) {
    auto text = fromValue(description), count = fromValue(steps);
    raise(kBeginProcess, {&text.get(), &count.get()});
  };
  budget_.eventi.StepProcess = [this](Variant& step) {
    auto number = fromValue(step);
    raise(kStepProcess, {&number.get()});
  };
  budget_.eventi.EndProcess = [this] { raise(kEndProcess, {}); };
}

void* BudgetObject::further(REFIID id) {
  if (IsEqualIID(id, IID_IConnectionPointContainer)) return static_cast<IConnectionPointContainer*>(this);
  if (IsEqualIID(id, IID_IProvideClassInfo) || IsEqualIID(id, IID_IProvideClassInfo2))
    return static_cast<IProvideClassInfo2*>(this);
  return nullptr;
}

IID BudgetObject::dispatchInterface() const { return kDispatch; }

STDMETHODIMP BudgetObject::GetClassInfo(ITypeInfo** information) {
  return information ? typeInformation(kClass, information) : E_POINTER;
}

STDMETHODIMP BudgetObject::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = kEventsInterface;
  return S_OK;
}

}  // namespace com
