#include "compare/ChangeComparison.h"

#include <utility>

#include "conf/ConfSetting.h"
#include "conf/EndApplication.h"

namespace quenmar {

namespace {

/// An unnamed field counts as absent.
bool Has(const Document& tree, StringView name) {
  return !name.empty() && tree.Fields().IndexOf(name) >= 0;
}

/// Appends a copy of `field` with all its parameters.
/// @return its index.
int AppendCopy(const Field& field, Document& target) {
  const int index = target.Fields().AddField(field.Name(), field.Value());
  Parameters& copies = target.Fields().Field(index)->Parameters();
  for (const Parameter& parameter : field.Parameters()) {
    copies.AddParameter(parameter.Name(), parameter.Value());
  }
  return index;
}

/// Appends to `target` name and value of each field of `first` that `second` lacks.
void AppendDifference(const Document& first, const Document& second, Document& target) {
  for (const Field& field : first.Fields()) {
    if (!Has(second, field.Name())) target.Fields().AddField(field.Name(), field.Value());
  }
}

/// The same for series entries, which keep their parameters.
void AppendSeriesDifference(const Document& first, const Document& second, Document& target) {
  for (const Field& entry : first.Fields()) {
    if (!Has(second, entry.Name())) AppendCopy(entry, target);
  }
}

/// @return whether the tree has a field of one of the names.
bool SetValues(Document& tree, const std::map<StringView, SharedText>& values) {
  bool found = false;
  for (Field& field : tree.Fields()) {
    const auto value = values.find(field.Name());
    if (field.Name().empty() || value == values.end()) continue;
    field.SetValue(value->second);
    found = true;
  }
  return found;
}

ChangeComparison::Values ValuesOf(const Document& tree) {
  ChangeComparison::Values values;
  for (const Field& field : tree.Fields()) values.emplace_back(field.Name(), field.Value());
  return values;
}

void Refill(Document& tree, const ChangeComparison::Values& values) {
  Fields& fields = tree.Fields();
  while (fields.Count() > 0) fields.RemoveField(fields.Count() - 1);
  for (const auto& [name, value] : values) fields.AddField(name, value);
}

}  // namespace

ChangeComparison::ChangeComparison(ConfDocuments documents, bool sorted)
    : documents_(std::move(documents)), sorted_(sorted) {}

void ChangeComparison::FillNewFields() {
  AppendDifference(*documents_.distribution, *documents_.server, newFields_);
  AppendSeriesDifference(*documents_.distributionSeries, *documents_.serverSeries, newSeries_);
  if (!sorted_) return;
  newFields_.Fields().Sort(true);
  newSeries_.Fields().Sort(true);
}

void ChangeComparison::FillActualFields() {
  const Fields& server = documents_.server->Fields();
  for (const Field& offered : documents_.distribution->Fields()) {
    const auto found = server.Field(offered.Name());
    if (!found->Name().empty()) actualFields_.Fields().AddField(found->Name(), found->Value());
  }

  for (const Field& offered : documents_.distributionSeries->Fields()) {
    const int index = AppendCopy(offered, actualSeries_);
    SetActive(*actualSeries_.Fields().Field(index), false);
  }
  for (const Field& entry : documents_.serverSeries->Fields()) {
    const auto known = actualSeries_.Fields().Field(entry.Name());
    if (known->Name().empty()) {
      AppendCopy(entry, actualSeries_);
    } else {
      SetActive(*known, true);
    }
  }
}

void ChangeComparison::FillDeletedFields() {
  AppendDifference(*documents_.server, *documents_.distribution, deletedFields_);
  AppendSeriesDifference(*documents_.serverSeries, *documents_.distributionSeries, deletedSeries_);
  if (!sorted_) return;
  deletedFields_.Fields().Sort(true);
  deletedSeries_.Fields().Sort(true);
}

void ChangeComparison::FillResultTrees() {
  FillNewFields();
  FillActualFields();
  FillDeletedFields();
}

SeriesGroups ChangeComparison::FillSeries(MessageBoxes& messages, const Language& language) {
  documents_.server->Fields().Sort(true);
  SeriesGroups groups =
      SeriesGroups::OfBoth(*documents_.distributionSeries, *documents_.serverSeries);
  if (groups.TooMany()) {
    ShowMessage(messages, language.Text(Message::kTooManySeries), message_style::kCritical);
    throw EndApplication();
  }
  return groups;
}

bool ChangeComparison::HasListChanges() const {
  return deletedFields_.Fields().Count() > 0 || newFields_.Fields().Count() > 0;
}

bool ChangeComparison::IsMandatory(StringView name) const {
  return quenmar::IsMandatory(*documents_.distribution, name);
}

int ChangeComparison::Add(const std::vector<String>& names) {
  return Move(names, newFields_, actualFields_);
}

int ChangeComparison::Remove(const std::vector<String>& names, MessageBoxes& messages,
                             const Language& language) {
  using namespace message_style;
  std::vector<String> agreed;
  for (const String& name : names) {
    if (IsMandatory(name)) {
      const Button answer = ShowMessage(messages, language.Text(Message::kRemoveMandatory),
                                        kYesNoCancel | kQuestion | kDefaultButton2, {name});
      if (answer == Button::kCancel) break;
      if (answer != Button::kYes) continue;
    }
    agreed.push_back(name);
  }
  return Move(agreed, actualFields_, deletedFields_);
}

int ChangeComparison::Restore(const std::vector<String>& names) {
  return Move(names, deletedFields_, actualFields_);
}

int ChangeComparison::Move(const std::vector<String>& names, Document& from, Document& to) {
  int moved = 0;
  for (const String& name : names) {
    const auto field = from.Fields().Field(name);
    if (field->Name().empty()) continue;
    to.Fields().AddField(field->Name(), field->Value());
    from.Fields().RemoveField(name);
    ++moved;
  }
  if (moved > 0 && sorted_) SortLists();
  return moved;
}

void ChangeComparison::SortLists() {
  for (Document* const tree : {&newFields_, &actualFields_, &deletedFields_}) {
    tree->Fields().Sort(true);
  }
}

bool ChangeComparison::SetNewValue(StringView name, StringView value) {
  return SetValues(newFields_, {{name, value}});
}

bool ChangeComparison::SetActualValue(StringView name, StringView value) {
  return SetValues(actualFields_, {{name, value}});
}

void ChangeComparison::SetActualValues(const std::map<StringView, SharedText>& values) {
  (void)SetValues(actualFields_, values);
}

ChangeComparison::Lists ChangeComparison::CaptureLists() const {
  return {ValuesOf(newFields_), ValuesOf(actualFields_), ValuesOf(deletedFields_)};
}

void ChangeComparison::SetLists(const Lists& lists) {
  Refill(newFields_, lists.newFields);
  Refill(actualFields_, lists.actualFields);
  Refill(deletedFields_, lists.deletedFields);
}

}  // namespace quenmar
