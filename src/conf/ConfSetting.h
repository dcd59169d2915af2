/// The fields of a configuration file's trees. No other file names their parameters or knows their
/// positions.
///
/// Settings tree: the field has the setting's name and value, and the parameters "Comments"
/// (index 0: the comment block, lines joined by CR LF, tabs and "//" replaced by spaces) and
/// "Disabled" (index 1). Series tree: the field is named by the entry's value and has no value of
/// its own; its parameters are "Type" (index 0: the name of the repeatable setting) and "Disabled"
/// (index 1).
///
/// "Disabled" is "1" for an active line and "0" for one that is commented out: the reverse of its
/// name. The trees that `compare` and `dump` print, and the comparison, rely on it.
///
/// A further commented-out line of an active setting is a further field of that name without
/// parameters; the first one gets a second pair of them.
#pragma once

#include "docmodel/Document.h"
#include "text/SharedText.h"
#include "text/String.h"

namespace quenmar {

/// @return whether "Disabled" is "1": the line of a setting or series entry is active.
[[nodiscard]] bool IsActive(const Field& field);

/// @return whether "Disabled" is "0"; a field without parameters is neither.
[[nodiscard]] bool IsCommentedOut(const Field& field);

void SetActive(Field& field, bool active);

/// @return the comment block of a setting; empty for a series entry.
[[nodiscard]] SharedText CommentOf(const Field& setting);

/// @return the name of the repeatable setting that a series entry belongs to.
[[nodiscard]] SharedText TypeOf(const Field& entry);

/// @return whether a server needs the setting of that name: the distribution's is active. False for
/// one that the distribution lacks.
[[nodiscard]] bool IsMandatory(const Document& distribution, StringView name);

/// Gives a setting its parameters.
void AddSettingParameters(Field& setting, const SharedText& comment, bool active);

/// Appends a line end and a text to the comment block of a setting.
void AppendToComment(Field& setting, StringView text);

/// Appends a series entry.
/// @return its field.
Ref<Field> AddSeriesEntry(Document& series, const SharedText& name, const SharedText& type,
                          bool active);

}  // namespace quenmar
