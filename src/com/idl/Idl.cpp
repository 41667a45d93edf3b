#include "com/idl/Idl.h"

#include <array>
#include <cstdio>
#include <set>
#include <string_view>
#include <utility>

#include "com/idl/HelpTexts.h"
#include "com/idl/Identifiers.h"
#include "com/idl/MemberId.h"
#include "object/Interfaccia.h"

namespace com {
namespace {

using bukorval::Genere, bukorval::Membro, bukorval::Parametro, bukorval::TipoDato;

struct Guid {
  unsigned first;
  unsigned second, third;
  std::array<unsigned, 8> rest;
};

std::string textOf(const Guid& id) {
  std::array<char, 40> text{};
  const auto& r = id.rest;
  std::snprintf(text.data(), text.size(), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", id.first, id.second,
                id.third, r[0], r[1], r[2], r[3], r[4], r[5], r[6], r[7]);
  return text.data();
}

std::string typeName(TipoDato type, const std::string& enumeration) {
  if (!enumeration.empty()) return enumeration;
  switch (type) {
    case TipoDato::Nessuno: return "void";
    case TipoDato::Variant: return "VARIANT";
    case TipoDato::Integer: return "short";
    case TipoDato::Long: return "long";
    case TipoDato::Boolean: return "VARIANT_BOOL";
    case TipoDato::String: return "BSTR";
    default: return "IDispatch*";
  }
}

/// Help texts have no encoding that every tool agrees on.
std::string plain(std::string text) {
  constexpr std::pair<std::string_view, std::string_view> kTwins[] = {{"…", "..."}, {"ì", "i"}, {"°", " "}};
  for (const auto& [letter, twin] : kTwins)
    for (auto at = text.find(letter); at != text.npos; at = text.find(letter)) text.replace(at, letter.size(), twin);
  return text;
}

std::string parameterText(const Parametro& parameter) {
  auto text = std::string(parameter.inOut ? "[in, out" : "[in") + (parameter.opzionale ? ", optional] " : "] ");
  return text + typeName(parameter.tipo, parameter.enumerazione) + (parameter.inOut ? "* " : " ") + parameter.nome;
}

std::string parametersText(const Membro& member) {
  std::string text;
  for (const auto& parameter : member.parametri) text += (text.empty() ? "" : ", ") + parameterText(parameter);
  return text;
}

class Writer {
 public:
  explicit Writer(const std::string& sourceFolder) : help_(helpTexts(sourceFolder)) {}

  std::string write() {
    line(
        "// The type library of the component, made from the table of the members and the sentences of their "
        "contract.");
    line("import \"oaidl.idl\";");
    line("");
    line("[uuid(" + textOf(Guid BUKORVAL_LIBRARY) + "), version(1.0), helpstring(\"Budget object\")]");
    line("library BUKORVAL {");
    line("  importlib(\"stdole2.tlb\");");
    line("");
    enumerations();
    dispatchInterface();
    events();
    line("  [uuid(" + textOf(Guid BUKORVAL_CLASS) + "), helpstring(\"The budget object\")]");
    line("  coclass CLSKORVAL {");
    line("    [default] dispinterface _CLSKORVAL;");
    line("    [default, source] dispinterface __CLSKORVAL;");
    line("  };");
    line("};");
    return text_;
  }

 private:
  void line(const std::string& text) { text_ += text + '\n'; }

  void enumerations() {
    std::set<std::string> names;
    for (const auto& member : bukorval::interfaccia()) {
      names.insert(member.enumerazione);
      for (const auto& parameter : member.parametri) names.insert(parameter.enumerazione);
    }
    names.erase("");
    for (const auto& name : names) line("  typedef [public] long " + name + ";");
    line("");
  }

  void dispatchInterface() {
    line("  [uuid(" + textOf(Guid BUKORVAL_DISPATCH) + ")]");
    line("  dispinterface _CLSKORVAL {");
    line("    properties:");
    line("    methods:");
    for (const auto& member : bukorval::interfaccia())
      member.genere == Genere::Metodo ? method(member) : property(member);
    line("  };");
    line("");
  }

  void method(const Membro& member) {
    head(memberId(member), "", member.nome);
    line("      " + typeName(member.tipo, member.enumerazione) + " " + member.nome + "(" + parametersText(member) +
         ");");
  }

  void property(const Membro& member) {
    const auto type = typeName(member.tipo, member.enumerazione);
    if (member.leggi) {
      head(memberId(member), "propget, ", member.nome);
      line("      " + type + " " + member.nome + "();");
    }
    if (member.scrivi) {
      head(memberId(member), type == "IDispatch*" ? "propputref, " : "propput, ", member.nome);
      line("      void " + member.nome + "([in] " + type + " value);");
    }
  }

  void events() {
    line("  [uuid(" + textOf(Guid BUKORVAL_EVENTS) + ")]");
    line("  dispinterface __CLSKORVAL {");
    line("    properties:");
    line("    methods:");
    head(1, "", "BeginProcess");
    line("      void BeginProcess([in, out] VARIANT* Description, [in, out] VARIANT* NumSteps);");
    head(2, "", "StepProcess");
    line("      void StepProcess([in, out] VARIANT* StepNumber);");
    head(3, "", "EndProcess");
    line("      void EndProcess();");
    line("  };");
    line("");
  }

  void head(std::int32_t id, const std::string& kind, const std::string& name) {
    std::string help;
    for (const char c : plain(help_.at(name))) {
      if (c == '"' || c == '\\') help += '\\';
      help += c;
    }
    line("      [id(" + std::to_string(id) + "), " + kind + "helpstring(\"" + help + "\")]");
  }

  std::map<std::string, std::string> help_;
  std::string text_;
};

}  // namespace

std::string typeLibraryText(const std::string& sourceFolder) { return Writer(sourceFolder).write(); }

}  // namespace com
