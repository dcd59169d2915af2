#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"
#include "updater/ChangeComparison.h"

namespace quenmar {

int RunCompare(const CompareArguments& arguments, const CommandContext& context) {
  const ConfReader reader(context.options, context.language, context.messages);
  ConfDocuments documents;
  if (!ReadOrTell(reader, arguments.distribution, documents.distribution,
                  documents.distributionSeries, context) ||
      !ReadOrTell(reader, arguments.server, documents.server, documents.serverSeries, context)) {
    return kTrouble;
  }
  ChangeComparison comparison(std::move(documents), arguments.sort);
  comparison.FillResultTrees();

  context.streams.out << TreesJson({{"NewFields", &comparison.NewFields()},
                                    {"NewSeries", &comparison.NewSeries()},
                                    {"ActualFields", &comparison.ActualFields()},
                                    {"ActualSeries", &comparison.ActualSeries()},
                                    {"DeletedFields", &comparison.DeletedFields()},
                                    {"DeletedSeries", &comparison.DeletedSeries()}});
  return kNothingToDo;
}

}  // namespace quenmar
