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

  const Json trees = {{"NewFields", FieldsJson(comparison.NewFields())},
                      {"NewSeries", FieldsJson(comparison.NewSeries())},
                      {"ActualFields", FieldsJson(comparison.ActualFields())},
                      {"ActualSeries", FieldsJson(comparison.ActualSeries())},
                      {"DeletedFields", FieldsJson(comparison.DeletedFields())},
                      {"DeletedSeries", FieldsJson(comparison.DeletedSeries())}};
  context.streams.out << trees.dump(1) << '\n';
  return kNothingToDo;
}

}  // namespace quenmar
