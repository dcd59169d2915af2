#include "widgets/ApplyChanges.h"

#include "conf/ConfWriter.h"
#include "conf/FolderCheck.h"
#include "conf/Functions.h"
#include "conf/SaveChanges.h"

namespace quenmar {

bool ApplyChanges(const FileContext& context, const Document& settings, const SeriesView& series) {
  const ConfWriter writer(context.options, context.language, context.messages);
  const Path path = PathFromText(JoinPath(context.serverFolder, context.fileName));
  String details;
  // A file that cannot be read has no details; what is wrong with it saving tells.
  if (String text; ReadTextFile(path, text)) {
    details = DiffText(
        ListSaveChanges(text, writer.ConfFileLines(settings, series), context.options.series));
  }
  if (ShowMessage(context.messages, String(context.language.Text(LNG20)),
                  message_style::kYesNo | message_style::kQuestion, {}, details) != Button::kYes) {
    return false;
  }
  return writer.SaveConfFile(path, settings, series);
}

}  // namespace quenmar
