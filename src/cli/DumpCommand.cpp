#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"
#include "text/Charset.h"

namespace quenmar {

int RunDump(const DumpArguments& arguments, const CommandContext& context) {
  std::shared_ptr<Document> settings;
  std::shared_ptr<Document> series;
  const bool complete = ReadConfFile(arguments.file, settings, series, context);
  std::ostream& out = context.streams.out;
  if (arguments.xml.empty()) {
    PrintTreesJson(out, {{"settings", settings.get()}, {"series", series.get()}});
  } else {
    // The bytes of an exported file. What was read from one always fits.
    Document& tree = arguments.xml == "settings" ? *settings : *series;
    out << ToWindows1252(tree.XMLExport()).value();
  }
  return complete ? kNothingToDo : kTrouble;
}

}  // namespace quenmar
