#include "conf/ConfSetting.h"

namespace quenmar {

namespace {

constexpr int kCommentsIndex = 0;  // in the settings tree
constexpr int kTypeIndex = 0;      // in the series tree
constexpr int kDisabledIndex = 1;  // in both
// Texts that the fields of all trees share.
const SharedText kComments(u"Comments");
const SharedText kType(u"Type");
const SharedText kDisabled(u"Disabled");
const SharedText kActive(u"1");
const SharedText kCommentedOut(u"0");

const SharedText& Flag(bool active) { return active ? kActive : kCommentedOut; }

}  // namespace

bool IsActive(const Field& field) {
  return field.Parameters().Parameter(kDisabledIndex)->Value() == Flag(true);
}

bool IsCommentedOut(const Field& field) {
  return field.Parameters().Parameter(kDisabledIndex)->Value() == Flag(false);
}

void SetActive(Field& field, bool active) {
  field.Parameters().Parameter(kDisabledIndex)->SetValue(Flag(active));
}

SharedText CommentOf(const Field& setting) {
  const auto parameter = setting.Parameters().Parameter(kCommentsIndex);
  return parameter->Name() == kComments ? parameter->Value() : SharedText();
}

SharedText TypeOf(const Field& entry) { return entry.Parameters().Parameter(kTypeIndex)->Value(); }

bool IsMandatory(const Document& distribution, StringView name) {
  return IsActive(*distribution.Fields().Field(name));
}

void AddSettingParameters(Field& setting, const SharedText& comment, bool active) {
  setting.Parameters().AddParameter(kComments, comment);
  setting.Parameters().AddParameter(kDisabled, Flag(active));
}

void AppendToComment(Field& setting, StringView text) {
  const auto comment = setting.Parameters().Parameter(kComments);
  comment->SetValue(String(comment->Value()).append(kLineEnd).append(text));
}

Ref<Field> AddSeriesEntry(Document& series, const SharedText& name, const SharedText& type,
                          bool active) {
  const int index = series.Fields().AddField(name, {});
  Ref<Field> entry = series.Fields().Field(index);
  entry->Parameters().AddParameter(kType, type);
  entry->Parameters().AddParameter(kDisabled, Flag(active));
  return entry;
}

}  // namespace quenmar
