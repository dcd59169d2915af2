#include <syslog.h>

#include "docmodel/EventLog.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

class SystemLogger : public EventLog {
 public:
  void Informational(StringView text) override {
    ::syslog(LOG_USER | LOG_INFO, "quenmar: %s", ToUtf8(text).c_str());
  }
};

}  // namespace

EventLog& SystemEventLog() {
  static SystemLogger logger;
  return logger;
}

}  // namespace quenmar
