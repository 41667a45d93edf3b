#pragma once

#include "com/Objects.h"
#include "com/foreign/Caller.h"
#include "suite/ActiveInterface.h"

namespace com {

/// A client's session as ours, under the same names. It needs CodiceDitta; a member that it lacks has the value that a
/// company has without a setting.
class ClientSession : public suite::ActiveInterface, public ClientObject {
 public:
  explicit ClientSession(Ref<IDispatch> object) : caller_(std::move(object)) {}

  IDispatch* client() const override { return caller_.get(); }

  values::Variant CodiceDitta() const override;
  values::Variant CodicePdcCoGe() const override;
  values::Variant MastroClienti() const override;
  values::Variant MastroFornitori() const override;
  char SeparatoreDecimale() const override;
  int StrutturaConti() const override;
  std::vector<int> LunghezzeLivelli() const override;
  values::Variant TestoMessaggio(int numero) const override;
  void MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) override;

 private:
  values::Variant optional(const wchar_t* member) const;

  Caller caller_;
};

}  // namespace com
