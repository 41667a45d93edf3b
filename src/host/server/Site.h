#pragma once

#include <string>
#include <string_view>

#include "host/server/Gate.h"
#include "host/server/Http.h"
#include "host/server/Jobs.h"
#include "host/server/Operations.h"

namespace bukorval::host::server {

/// Who is served what, for the page to know before it asks for more.
struct About {
  std::string user, companyName;
  values::Variant company;
  char decimalSeparator = ',';
  std::string version;
};

/// Every address of the server and what answers there.
class Site {
 public:
  Site(Operations& operations, Jobs& jobs, Gate& gate, About about, std::string assetsFolder)
      : operations_(operations),
        jobs_(jobs),
        gate_(gate),
        about_(std::move(about)),
        assetsFolder_(std::move(assetsFolder)) {}

  /// Never throws: what goes wrong is a reply as well.
  Reply answer(Request request) noexcept;
  /// A failure of the connection itself, before there is a request.
  static Reply failure(int status);

 private:
  struct Route;
  static const Route kRoutes[];

  Reply route(Request& request);
  Reply served(Request& request, std::string_view rest, const Route& route);

  Reply home(const Request& request, std::string_view rest);
  Reply loginForm(const Request& request, std::string_view rest);
  Reply login(const Request& request, std::string_view rest);
  Reply session(const Request& request, std::string_view rest);
  Reply openApi(const Request& request, std::string_view rest);
  Reply run(const Request& request, std::string_view rest);
  Reply startJob(const Request& request, std::string_view rest);
  Reply lookAtJob(const Request& request, std::string_view rest);
  Reply forgetJob(const Request& request, std::string_view rest);
  Reply deltas(const Request& request, std::string_view rest);
  Reply changes(const Request& request, std::string_view rest);
  Reply drawn(const Request& request, std::string_view rest);
  Reply picture(const Request& request, std::string_view rest);

  Operations& operations_;
  Jobs& jobs_;
  Gate& gate_;
  About about_;
  std::string assetsFolder_;
};

}  // namespace bukorval::host::server
