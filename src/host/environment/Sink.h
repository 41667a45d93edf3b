#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/output/Formats.h"

namespace bukorval::host {

/// Takes what a command shows and tells, instead of the standard streams: for who runs commands for others.
class Sink {
 public:
  virtual ~Sink() = default;

  /// Plain values and tables, as the command chose them for the format.
  virtual void show(const CallResults& results) = 0;
  virtual void show(const Table& table) = 0;
  /// What a person should know beside it.
  virtual void tell(std::string_view text) = 0;
  /// A picture of a report, as one SVG document.
  virtual void draw(std::string_view name, std::string svg) = 0;

  /// The long steps of the object. What `step` throws ends the run, which then leaves nothing behind.
  virtual void begin(std::string_view description, std::int64_t steps) = 0;
  virtual void step(std::int64_t done) = 0;
  virtual void end() = 0;
};

}  // namespace bukorval::host
