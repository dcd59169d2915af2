#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"
#include "updater/ChangeComparison.h"

namespace quenmar {

int RunCompare(const CompareArguments& arguments, const CommandContext& context) {
  const ConfReader reader(context.options, context.language, context.messages);
  ConfDocuments documents;
  if (!reader.LoadConfFile(arguments.distribution, documents.distribution,
                           documents.distributionSeries) ||
      !reader.LoadConfFile(arguments.server, documents.server, documents.serverSeries)) {
    return kTrouble;
  }
  ChangeComparison comparison(std::move(documents), arguments.sort);
  comparison.FillNewFields();
  comparison.FillActualFields();
  comparison.FillDeletedFields();

  context.streams.out << TreesJson({{"NewFields", &comparison.NewFields()},
                                    {"NewSeries", &comparison.NewSeries()},
                                    {"ActualFields", &comparison.ActualFields()},
                                    {"ActualSeries", &comparison.ActualSeries()},
                                    {"DeletedFields", &comparison.DeletedFields()},
                                    {"DeletedSeries", &comparison.DeletedSeries()}});
  return kNothingToDo;
}

}  // namespace quenmar
