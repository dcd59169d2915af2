#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"
#include "compare/ChangeComparison.h"

namespace quenmar {

int RunCompare(const CompareArguments& arguments, const CommandContext& context) {
  ConfDocuments documents;
  if (!ReadConfFile(arguments.distribution, documents.distribution, documents.distributionSeries,
                    context) ||
      !ReadConfFile(arguments.server, documents.server, documents.serverSeries, context)) {
    return kTrouble;
  }
  ChangeComparison comparison(std::move(documents), arguments.sort);
  comparison.FillResultTrees();

  PrintTreesJson(context.streams.out, {{"NewFields", &comparison.NewFields()},
                                       {"NewSeries", &comparison.NewSeries()},
                                       {"ActualFields", &comparison.ActualFields()},
                                       {"ActualSeries", &comparison.ActualSeries()},
                                       {"DeletedFields", &comparison.DeletedFields()},
                                       {"DeletedSeries", &comparison.DeletedSeries()}});
  return kNothingToDo;
}

}  // namespace quenmar
