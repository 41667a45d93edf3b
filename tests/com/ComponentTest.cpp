#include <atomic>
#include <cstring>
#include <thread>

#include "Late.h"
#include "com/Enumeration.h"
#include "com/Events.h"
#include "com/Failures.h"
#include "com/idl/Identifiers.h"
#include "helper/Listener.h"
#include "helper/Proxy.h"

namespace {

using namespace com_tests;

constexpr GUID kDispatch = BUKORVAL_DISPATCH, kClass = BUKORVAL_CLASS;

OleVariant typed(VARTYPE type, LONGLONG bits) {
  OleVariant value;
  V_I8(&value.get()) = bits;
  V_VT(&value.get()) = type;
  return value;
}

/// The outcome of a call, with which argument it names.
std::pair<HRESULT, int> outcomeOf(const Caller& object, const wchar_t* member, std::vector<OleVariant> arguments,
                                  WORD flags = DISPATCH_METHOD) {
  DISPID id = 0, assigned = DISPID_PROPERTYPUT;
  auto* name = const_cast<wchar_t*>(member);
  object.get()->GetIDsOfNames(IID_NULL, &name, 1, 0, &id);
  std::vector<VARIANT> reversed;
  for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) reversed.push_back(each->get());
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  if (flags == DISPATCH_PROPERTYPUT) parameters.rgdispidNamedArgs = &assigned, parameters.cNamedArgs = 1;
  UINT argument = 99;
  const auto outcome = object.get()->Invoke(id, IID_NULL, 0, flags, &parameters, nullptr, nullptr, &argument);
  return {outcome, static_cast<int>(argument)};
}

std::string failure(const std::function<void()>& action) {
  try {
    action();
  } catch (const com::ClientFailure& error) {
    return std::to_string(error.code() & 0xFFFF) + " " + error.what();
  }
  return "";
}

TEST(Values, EverySubtypeIsRead) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  DECIMAL wide{};
  wide.Hi32 = 0xFFFFFFFF, wide.Lo64 = ~0ULL, wide.scale = 28, wide.sign = DECIMAL_NEG;
  OleVariant decimal;
  V_DECIMAL(&decimal.get()) = wide;
  V_VT(&decimal.get()) = VT_DECIMAL;
  double real = 1.25, moment = -1.25;  // 29 December 1899, six in the morning
  float single = 0.5F;
  LONGLONG bits = 0;
  std::vector<std::pair<OleVariant, std::string>> cases;
  const auto add = [&](VARTYPE type, LONGLONG value, const char* text) {
    cases.emplace_back(typed(type, value), text);
  };
  add(VT_I1, -5, "Int16 -5"), add(VT_UI1, 250, "Int16 250"), add(VT_I2, -7, "Int16 -7"),
      add(VT_UI2, 65535, "Int32 65535");
  add(VT_I4, -70000, "Int32 -70000"), add(VT_INT, 8, "Int32 8"), add(VT_UI4, 4294967295LL, "Decimal 4294967295");
  add(VT_UINT, 9, "Int32 9"), add(VT_I8, -5000000000LL, "Decimal -5000000000"),
      add(VT_UI8, -1, "Decimal 18446744073709551615");
  add(VT_CY, 12345600, "Decimal 1234.56"), add(VT_BOOL, -1, "Boolean True"), add(VT_EMPTY, 0, "Empty "),
      add(VT_NULL, 0, "Null ");
  std::memcpy(&bits, &real, sizeof real), add(VT_R8, bits, "Double 1.25");
  std::memcpy(&bits, &moment, sizeof moment), add(VT_DATE, bits, "Date 29/12/1899 06:00:00");
  bits = 0, std::memcpy(&bits, &single, sizeof single), add(VT_R4, bits, "Double 0.5");
  cases.emplace_back(com::valueOf("perché €"), "String perché €");
  cases.emplace_back(std::move(decimal), "Decimal -7.9228162514264337593543950335");
  for (auto& [value, text] : cases) {
    object.put(L"DaConto", OleVariant());
    // By reference to the typed place and to the VARIANT; then by value.
    OleVariant reference, nested;
    V_VT(&nested.get()) = VT_BYREF | VT_VARIANT, V_VARIANTREF(&nested.get()) = &value.get();
    const auto type = V_VT(&value.get());
    std::vector<OleVariant*> forms{std::addressof(nested)};
    if (type > VT_NULL) {
      V_VT(&reference.get()) = static_cast<VARTYPE>(type | VT_BYREF);
      V_BYREF(&reference.get()) = type == VT_DECIMAL ? static_cast<void*>(&value.get()) : &V_I8(&value.get());
      forms.push_back(std::addressof(reference));
    }
    for (auto* form : forms) {
      EXPECT_EQ(shown(object.value(L"NVL", pack(std::move(*form), com::valueOf(1)))),
                type <= VT_NULL ? "Int32 1" : text);
    }
    object.put(L"DaConto", std::move(value));
    EXPECT_EQ(shown(object.value(L"DaConto")), text);
  }
}

TEST(Values, ResultsFitTypedVariables) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  LONG kind = 1;
  OleVariant reference;
  V_VT(&reference.get()) = VT_BYREF | VT_I4, V_I4REF(&reference.get()) = &kind;
  // Without a connection the structure is not read, and its kind comes back as 0.
  object.call(L"GetStrutturaBU60TipoPdcCodicePdc", pack(com::valueOf("X"), std::move(reference), com::valueOf("")));
  EXPECT_EQ(kind, 0);
  VARIANT_BOOL flag = VARIANT_TRUE;
  BSTR text = ::SysAllocString(L"before");
  OleVariant boolean, words;
  V_VT(&boolean.get()) = VT_BYREF | VT_BOOL, V_BOOLREF(&boolean.get()) = &flag;
  V_VT(&words.get()) = VT_BYREF | VT_BSTR, V_BSTRREF(&words.get()) = &text;
  object.call(L"GetBdgDettaglioEsiste",
              pack(com::valueOf(1), com::valueOf(0), com::valueOf(1), std::move(words), std::move(boolean)));
  EXPECT_EQ(std::wstring(text), L"0");
  EXPECT_EQ(flag, VARIANT_TRUE);
  ::SysFreeString(text);
}

TEST(Calls, WhatIsWrongWithACallIsItsOutcome) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  object.call(L"CDecN", args("abc"));
  const auto before = object.value(L"errore");
  using Outcome = std::pair<HRESULT, int>;
  EXPECT_EQ(outcomeOf(object, L"GetBdgNrPeriodi", {}), Outcome(DISP_E_BADPARAMCOUNT, 99));
  EXPECT_EQ(outcomeOf(object, L"GetBdgNrPeriodi", args(1, 2)), Outcome(DISP_E_BADPARAMCOUNT, 99));
  EXPECT_EQ(outcomeOf(object, L"GetBdgPeriodo", args(7, "x", 0, 1)), Outcome(DISP_E_TYPEMISMATCH, 2));
  EXPECT_EQ(outcomeOf(object, L"TipoBudget", args("quattro"), DISPATCH_PROPERTYPUT).first, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcomeOf(object, L"ElencoSedi", args(1), DISPATCH_PROPERTYPUT).first, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcomeOf(object, L"Stato", args(1), DISPATCH_PROPERTYPUT).first, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(outcomeOf(object, L"Connessione", {}, DISPATCH_PROPERTYGET).first, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(outcomeOf(object, L"NoSuchMember", {}).first, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(object.value(L"errore"), before) << "nothing has run";
  EXPECT_EQ(failure([&] { object.value(L"RstSaldiElaEco", args("CONTO")); }),
            "91 Object variable or With block variable not set: RstSaldiElaEco");
  // By name: the second parameter first, the optional one left out.
  wchar_t* names[] = {const_cast<wchar_t*>(L"calcoladelta"), const_cast<wchar_t*>(L"MYVALORE1"),
                      const_cast<wchar_t*>(L"MyValore2")};
  DISPID ids[3];
  ASSERT_EQ(object.get()->GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
  VARIANT values[] = {com::valueOf(10).release(), com::valueOf(25).release()};
  DISPPARAMS parameters{values, ids + 1, 2, 2};
  OleVariant result;
  ASSERT_EQ(object.get()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr), S_OK);
  EXPECT_EQ(values::toInt32(com::toValue(result.get())), 15);
}

/// The outcome of a call with one argument that has a name.
HRESULT outcomeOfNamed(const Caller& object, const wchar_t* member, const wchar_t* parameter, OleVariant argument) {
  wchar_t* names[] = {const_cast<wchar_t*>(member), const_cast<wchar_t*>(parameter)};
  DISPID ids[2];
  if (const auto known = object.get()->GetIDsOfNames(IID_NULL, names, 2, 0, ids); FAILED(known)) return known;
  DISPPARAMS parameters{&argument, ids + 1, 1, 1};
  return object.get()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
}

TEST(Calls, WhatANameLeavesOutIsMissed) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  EXPECT_EQ(outcomeOfNamed(object, L"NVL", L"ValIfNull", com::valueOf(1)), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(outcomeOfNamed(create(L"BUKORVAL.Session"), L"Open", L"CodiceDitta", com::valueOf(1)),
            DISP_E_PARAMNOTOPTIONAL);
  OleVariant missing;
  V_VT(&missing.get()) = VT_ERROR, V_ERROR(&missing.get()) = DISP_E_PARAMNOTFOUND;
  EXPECT_EQ(outcomeOf(object, L"NVL", pack(std::move(missing), com::valueOf(1))),
            std::pair(DISP_E_PARAMNOTOPTIONAL, 1));
  EXPECT_EQ(outcomeOfNamed(object, L"GetDescrizioneTipoBudget", L"MyBdgTipo", com::valueOf(4)), S_OK);
}

TEST(Calls, TheArgumentAtFaultIsFoundWhereItLies) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  wchar_t* names[] = {const_cast<wchar_t*>(L"GetBdgPeriodo"), const_cast<wchar_t*>(L"MyBdgDataInizio"),
                      const_cast<wchar_t*>(L"MyBdgPeriodicita"), const_cast<wchar_t*>(L"MyBdgPeriodoSolareFiscale")};
  DISPID ids[4];
  ASSERT_EQ(object.get()->GetIDsOfNames(IID_NULL, names, 4, 0, ids), S_OK);
  // MyMese by place, the others by name.
  OleVariant values[] = {com::valueOf(1), com::valueOf("x"), com::valueOf(0), com::valueOf(7)};
  VARIANT given[] = {values[0].get(), values[1].get(), values[2].get(), values[3].get()};
  DISPPARAMS parameters{given, ids + 1, 4, 3};
  UINT argument = 99;
  EXPECT_EQ(object.get()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &argument),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(argument, 1u);
  ids[3] = 12;
  EXPECT_EQ(object.get()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &argument),
            DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(argument, 2u);
}

TEST(Calls, AWrongOneLeavesNoErrorOfAnotherBehind) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  const auto set = create(L"BUKORVAL.Recordset");
  EXPECT_EQ(failure([&] { set.call(L"MoveNext"); }).substr(0, 4), "3704");
  EXPECT_EQ(outcomeOf(object, L"GetBdgPeriodo", args(7, "x", 0, 1)).first, DISP_E_TYPEMISMATCH);
  Ref<IErrorInfo> left;
  EXPECT_EQ(::GetErrorInfo(0, left.out()), S_FALSE);
}

TEST(Library, TellsOfItself) {
  const auto object = create(L"BUKORVAL.CLSKORVAL");
  const auto info = Ref<IProvideClassInfo2>::from(object.get(), IID_IProvideClassInfo2);
  ASSERT_TRUE(info);
  GUID events{};
  EXPECT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_EQ(events, com::kEventsInterface);
  Ref<ITypeInfo> coclass, dispatch;
  ASSERT_EQ(info->GetClassInfo(coclass.out()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(coclass->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, kClass);
  coclass->ReleaseTypeAttr(attributes);
  ASSERT_EQ(object.get()->GetTypeInfo(0, 0, dispatch.out()), S_OK);
  for (const auto& member : bukorval::interfaccia()) {
    auto wide = values::toWide(member.nome);
    auto* name = wide.data();
    MEMBERID known = 0;
    DISPID id = 1;
    EXPECT_EQ(dispatch->GetIDsOfNames(&name, 1, &known), S_OK) << member.nome;
    EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK);
    EXPECT_EQ(known, id) << member.nome;
    BSTR help = nullptr;
    EXPECT_EQ(dispatch->GetDocumentation(known, nullptr, &help, nullptr, nullptr), S_OK);
    EXPECT_GT(::SysStringLen(help), 10u) << member.nome;
    ::SysFreeString(help);
  }
  const auto errors = Ref<ISupportErrorInfo>::from(object.get(), IID_ISupportErrorInfo);
  EXPECT_EQ(errors->InterfaceSupportsErrorInfo(kDispatch), S_OK);
  EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IUnknown), S_FALSE);
}

struct Events : LateCompany {
  Events() {
    for (const auto& [name, value] :
         std::initializer_list<std::pair<const char*, Variant>>{{"TipoBudget", 4},
                                                                {"SottoTipoBudget", "01"},
                                                                {"AnnoEsercizio", 2025},
                                                                {"ProgressivoEsercizio", 1},
                                                                {"CodiceDitta", 1},
                                                                {"CodiceSede", 1},
                                                                {"BdgTipoScheda", 0},
                                                                {"DaScheda", "FIERE"},
                                                                {"AScheda", "FIERE"},
                                                                {"TipoDettaglioDestinazione", 0},
                                                                {"BdgDestinazioneSottoTipo", "02"},
                                                                {"BdgDestinazioneAnnoEsercizio", 2025},
                                                                {"BdgDestinazioneProgressivoEsercizio", 1},
                                                                {"BdgDestinazioneCodiceSede", 1}})
      set(name, value);
  }
};

TEST_F(Events, ReachEverySinkWhateverItDoes) {
  com_helper::Listener failing, calling, leaving, left;
  failing.answer = [](const std::string&) { return E_FAIL; };
  calling.answer = [&](const std::string&) {
    budget.call(L"GetDescrizioneTipoBudget", args(4));
    return S_OK;
  };
  leaving.answer = [&](const std::string&) { return left.stop(), leaving.stop(), S_OK; };
  for (auto* listener : {&failing, &calling, &leaving, &left}) listener->listen(budget.get());

  const auto container = Ref<IConnectionPointContainer>::from(budget.get(), IID_IConnectionPointContainer);
  Ref<IEnumConnectionPoints> points;
  Ref<IConnectionPoint> point;
  Ref<IEnumConnections> connections;
  ULONG fetched = 0;
  ASSERT_EQ(container->EnumConnectionPoints(points.out()), S_OK);
  ASSERT_EQ(points->Next(1, point.out(), &fetched), S_OK);
  ASSERT_EQ(point->EnumConnections(connections.out()), S_OK);
  std::array<CONNECTDATA, 5> sinks{};
  EXPECT_EQ(connections->Next(5, sinks.data(), &fetched), S_FALSE);
  EXPECT_EQ(fetched, 4u);
  for (ULONG i = 0; i < fetched; ++i) sinks[i].pUnk->Release();

  budget.call(L"BdgDupSchede_Duplicazione");
  EXPECT_EQ(outcome(), "Int32 0 String ");
  EXPECT_EQ(failing.heard(), "begin Duplicazione schede budget 1\nstep 1\nend\n");
  EXPECT_EQ(calling.heard(), failing.heard());
  EXPECT_EQ(leaving.heard(), "begin Duplicazione schede budget 1\n");
  EXPECT_EQ(left.heard(), "");
  failing.stop();
  calling.stop();
}

TEST_F(Events, ASinkMayReleaseTheObject) {
  com_helper::Listener last;
  last.answer = [&](const std::string&) {
    last.stop();
    budget = Caller(nullptr);
    return S_OK;
  };
  last.listen(budget.get());
  auto* running = budget.get();
  DISPPARAMS none{};
  DISPID id = 0;
  auto* name = const_cast<wchar_t*>(L"BdgDupSchede_Duplicazione");
  ASSERT_EQ(running->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK);
  EXPECT_EQ(running->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' AND BU65_SCHEDA_BU07 = 'FIERE'"),
            "1");
}

TEST_F(LateCompany, WorksOnObjectsOfSomebodyElse) {
  const auto strange = [](const Caller& object) { return com::dispatchValue(com_helper::proxyOf(object.ref())); };
  for (const auto& [name, value] : std::initializer_list<std::pair<const char*, Variant>>{{"TipoBudget", 4},
                                                                                          {"SottoTipoBudget", "01"},
                                                                                          {"AnnoEsercizio", 2025},
                                                                                          {"ProgressivoEsercizio", 1},
                                                                                          {"CodiceDitta", 1},
                                                                                          {"CodiceSede", 1},
                                                                                          {"BdgTipoScheda", 1}})
    set(name, value);
  const auto own = rowsOf(budget.object(L"RecordSetBudget"));
  ASSERT_EQ(std::ranges::count(own, '\n'), 2);
  budget.put(L"Connessione", strange(connection));
  budget.put(L"ActiveInterface", strange(lateSession));
  EXPECT_EQ(rowsOf(budget.object(L"RecordSetBudget")), own);
  EXPECT_EQ(outcome(), "Int32 0 String ");
  // What the database refuses travels with its own words.
  EXPECT_EQ(failure([&] { connection.call(L"Execute", args("SELECT 1 FROM NO_TABLE")); }),
            "16389 Invalid object name 'NO_TABLE'.");

  // A new card from a dictionary of the client's.
  const auto columns = create(L"Scripting.Dictionary");
  for (const auto& [key, item] : std::initializer_list<std::pair<const char*, Variant>>{
           {"BU65_INDCOSRIC_BU07", 1}, {"BU65_SCHEDA_BU07", "AFFATT"}, {"BU65_CODICE_CG31", 3}})
    columns.call(L"Add", args(key, item));
  const auto cards = one("SELECT COUNT(*) FROM BU65_TESBUDGET");
  budget.call(L"InserimentoNuovaSchedaBudget", pack(objectValue(columns)));
  EXPECT_EQ(outcome(), "Int32 0 String ");
  EXPECT_EQ(std::stoi(one("SELECT COUNT(*) FROM BU65_TESBUDGET")), std::stoi(cards) + 1);
  // What the client gave is what the client gets.
  const auto sites = create(L"Scripting.Dictionary");
  budget.put(L"ElencoSedi", objectValue(sites));
  EXPECT_EQ(budget.object(L"ElencoSedi").get(), sites.get());
  EXPECT_EQ(outcomeOf(budget, L"ElencoSedi", pack(objectValue(connection)), DISPATCH_PROPERTYPUT).first,
            DISP_E_TYPEMISMATCH);
}

TEST(Records, AreThoseOfADataAccessLibrary) {
  const auto set = create(L"BUKORVAL.Recordset");
  const auto fields = set.object(L"Fields");
  fields.call(L"Append", args("CODE", 200, 4));
  fields.call(L"Append", args("AMOUNT", 14, 0, 32));
  const auto amount = fields.object(L"Item", args("amount"));
  amount.put(L"Precision", com::valueOf(9));
  amount.put(L"NumericScale", com::valueOf(2));
  EXPECT_EQ(failure([&] { set.call(L"MoveNext"); }).substr(0, 4), "3704");
  set.call(L"Open");
  for (const auto& [code, value] : {std::pair{"A", 1.005}, std::pair{"B", 2.0}, std::pair{"C", 3.0}}) {
    set.call(L"AddNew");
    fields.object(L"Item", args(0)).put(L"Value", com::valueOf(code));
    amount.put(L"Value", com::valueOf(value));
    set.call(L"Update");
  }
  set.put(L"Filter", com::valueOf("AMOUNT >= 2"));
  EXPECT_EQ(rowsOf(set), "String B; Decimal 2.00; \nString C; Decimal 3.00; \n");
  const auto copy = set.object(L"Clone");
  EXPECT_EQ(copy.value(L"RecordCount"), Variant(3));
  copy.call(L"Move", args(1));
  copy.call(L"Delete");
  set.put(L"Filter", com::valueOf(0));
  EXPECT_EQ(rowsOf(set), "String A; Decimal 1.01; \nString C; Decimal 3.00; \n");
  EXPECT_EQ(failure([&] { set.value(L"Collect", args("CODE")); }).substr(0, 4), "3021");
  EXPECT_EQ(failure([&] { fields.call(L"Item", args(9)); }).substr(0, 4), "3265");
  set.call(L"Close");
  EXPECT_EQ(set.value(L"State"), Variant(0));
}

/// An array of one dimension whose elements lie in it as they do in the list.
template <class T>
OleVariant typedArray(VARTYPE type, std::vector<T> elements) {
  SAFEARRAY* array = ::SafeArrayCreateVector(type, 0, static_cast<ULONG>(elements.size()));
  for (LONG i = 0; i < static_cast<LONG>(elements.size()); ++i) ::SafeArrayPutElement(array, &i, &elements[i]);
  OleVariant value;
  V_ARRAY(&value.get()) = array;
  V_VT(&value.get()) = VT_ARRAY | type;
  return value;
}

TEST(Records, ARowIsGivenAsArraysOfAnyTypeOrNotAtAll) {
  const auto set = create(L"BUKORVAL.Recordset");
  const auto fields = set.object(L"Fields");
  for (const auto* name : {"A", "B"}) fields.call(L"Append", args(name, 14, 0, 32));
  for (const auto* name : {"A", "B"}) {
    const auto field = fields.object(L"Item", args(name));
    field.put(L"Precision", com::valueOf(9)), field.put(L"NumericScale", com::valueOf(2));
  }
  set.call(L"Open");
  const auto names = [] { return com::arrayOf(args("A", "B")); };
  DECIMAL amount{};
  amount.Lo64 = 1250, amount.scale = 2;
  set.call(L"AddNew", pack(names(), typedArray<DECIMAL>(VT_DECIMAL, {amount, amount})));
  set.call(L"AddNew", pack(names(), typedArray<LONG>(VT_I4, {3, 4})));
  set.call(L"AddNew", pack(names(), typedArray<double>(VT_R8, {0.5, 0.25})));
  const std::string rows =
      "Decimal 12.50; Decimal 12.50; \nDecimal 3.00; Decimal 4.00; \nDecimal 0.50; Decimal 0.25; \n";
  EXPECT_EQ(rowsOf(set), rows);
  // What is refused leaves no row begun that a later one would keep.
  EXPECT_NE(failure([&] { set.call(L"AddNew", pack(names(), com::arrayOf(args(1, "much")))); }), "");
  EXPECT_EQ(outcomeOf(set, L"AddNew", pack(names())).first, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(rowsOf(set), rows);
}

/// Runs in a thread of its own with an apartment.
void inApartment(const std::function<void()>& action) {
  std::thread([&] {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    action();
    ::CoUninitialize();
  }).join();
}

TEST_F(LateCompany, ServesTwoThreadsAndAMarshalledClient) {
  const auto work = [&] {
    const auto own = create(L"BUKORVAL.Connection");
    own.call(L"Open", args("Provider=SQLite;Data Source=" + database.path()));
    const auto object = create(L"BUKORVAL.CLSKORVAL");
    object.put(L"Connessione", objectValue(own));
    for (int i = 0; i < 50; ++i) EXPECT_EQ(object.value(L"GetNumeroForecast", args(4, "01")), Variant(std::int16_t{2}));
  };
  std::thread first([&] { inApartment(work); });
  inApartment(work);
  first.join();

  Ref<IStream> stream;
  ASSERT_EQ(::CoMarshalInterThreadInterfaceInStream(IID_IDispatch, budget.get(), stream.out()), S_OK);
  std::atomic<bool> done = false;
  std::thread client([&] {
    inApartment([&] {
      IDispatch* remote = nullptr;
      EXPECT_EQ(::CoGetInterfaceAndReleaseStream(stream.release(), IID_IDispatch, reinterpret_cast<void**>(&remote)),
                S_OK);
      const Caller object(Ref<IDispatch>::adopt(remote));
      OleVariant start, end;
      OleVariant places[2];
      for (int i = 0; i < 2; ++i) {
        auto& reference = i == 0 ? start : end;
        V_VT(&reference.get()) = VT_BYREF | VT_VARIANT, V_VARIANTREF(&reference.get()) = &places[i].get();
      }
      object.call(L"DeterminaDateInizioFineEsercizio",
                  pack(com::valueOf(1), com::valueOf(2025), com::valueOf(1), std::move(start), std::move(end)));
      EXPECT_EQ(shown(com::toValue(places[1].get())), "Date 31/12/2025");
    });
    done = true;
  });
  while (!done) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
    ::Sleep(1);
  }
  client.join();
}

TEST(Lifetime, TheLibraryGoesWhenNothingIsLeft) {
  {
    const auto set = create(L"BUKORVAL.Recordset");
    const auto fields = set.object(L"Fields");
    fields.call(L"Append", args("A", 3));
    EXPECT_TRUE(::GetModuleHandleW(L"bukorval.dll"));
    const auto canUnload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"bukorval.dll"), "DllCanUnloadNow")));
    EXPECT_EQ(canUnload(), S_FALSE);
    fields.call(L"_NewEnum");
  }
  const auto canUnload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"bukorval.dll"), "DllCanUnloadNow")));
  EXPECT_EQ(canUnload(), S_OK) << "every test before has let go of what it had";
  ::CoFreeUnusedLibrariesEx(0, 0);
  EXPECT_FALSE(::GetModuleHandleW(L"bukorval.dll"));
}

/// The main thread's apartment.
const struct Apartment {
  Apartment() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
} apartment;

}  // namespace
