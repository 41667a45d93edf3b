#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Requests and replies as the server's rooms see them: none of them knows the library that speaks HTTP.
namespace bukorval::host::server {

struct Request {
  std::string method, path;  ///< without what stands behind a question mark
  std::map<std::string, std::string> query;
  std::string body;
  std::string remote;                                        ///< address of who asks
  std::string user = {};                                     ///< who has entered; "" for who the server runs as
  std::function<std::string(const char*)> header = nullptr;  ///< "" for one that was not sent
};

struct Reply {
  int status = 200;
  std::string type;
  std::string body;
  std::vector<std::pair<std::string, std::string>> headers = {};
};

inline Reply jsonReply(int status, std::string body) {
  return {status, "application/json", std::move(body), {{"Cache-Control", "no-store"}}};
}

}  // namespace bukorval::host::server
