#pragma once

#include "text/String.h"

namespace quenmar {

/// Receives failures that no message box shows.
class EventLog {
 public:
  EventLog() = default;
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;
  virtual ~EventLog() = default;

  /// Writes an informational entry; a failure is ignored.
  virtual void Informational(StringView text) = 0;
};

/// @return the system's own log: the system logger, on Windows the application event log.
[[nodiscard]] EventLog& SystemEventLog();

}  // namespace quenmar
