#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"
#include "compare/ChangeComparison.h"

namespace quenmar {

int RunCompare(const CompareArguments& arguments, const CommandContext& context) {
  ConfDocuments documents;
  if (!ReadConfFile(arguments.distribution, documents.distribution, documents.distributionSeries,
                    context, ConfReader::Comments::kLeftOut) ||
      !ReadConfFile(arguments.server, documents.server, documents.serverSeries, context,
                    ConfReader::Comments::kLeftOut)) {
    return kFailure;
  }
  const auto comparison = std::make_shared<ChangeComparison>(std::move(documents), arguments.sort);
  comparison->FillResultTrees();

  PrintTreesJson(context.streams.out, {{"NewFields", &comparison->NewFields()},
                                       {"NewSeries", &comparison->NewSeries()},
                                       {"ActualFields", &comparison->ActualFields()},
                                       {"ActualSeries", &comparison->ActualSeries()},
                                       {"DeletedFields", &comparison->DeletedFields()},
                                       {"DeletedSeries", &comparison->DeletedSeries()}});
  context.Leave(comparison);
  return kNothingToDo;
}

}  // namespace quenmar
