#include "compare/ChangeComparison.h"

#include <utility>

#include "conf/EndApplication.h"

namespace quenmar {

namespace {

constexpr int kDisabled = 1;  // position of the "Disabled" parameter

/// An unnamed field counts as absent.
bool Has(const Document& tree, StringView name) {
  return !name.empty() && tree.Fields().IndexOf(name) >= 0;
}

/// Appends a copy of `field` with all its parameters.
void AppendCopy(const Field& field, Document& target) {
  const int index = target.Fields().AddField(field.Name(), field.Value());
  Parameters& copies = target.Fields().Field(index)->Parameters();
  for (int i = 0; i < field.Parameters().Count(); ++i) {
    const auto parameter = field.Parameters().Parameter(i);
    copies.AddParameter(parameter->Name(), parameter->Value());
  }
}

/// Appends to `target` name and value of each field of `first` that `second` lacks.
void AppendDifference(const Document& first, const Document& second, Document& target) {
  for (int i = 0; i < first.Fields().Count(); ++i) {
    const auto field = first.Fields().Field(i);
    if (!Has(second, field->Name())) target.Fields().AddField(field->Name(), field->Value());
  }
}

/// The same for series entries, which keep their parameters.
void AppendSeriesDifference(const Document& first, const Document& second, Document& target) {
  for (int i = 0; i < first.Fields().Count(); ++i) {
    const auto entry = first.Fields().Field(i);
    if (!Has(second, entry->Name())) AppendCopy(*entry, target);
  }
}

bool SetValue(Document& tree, StringView name, StringView value) {
  bool found = false;
  for (int i = 0; i < tree.Fields().Count(); ++i) {
    const auto field = tree.Fields().Field(i);
    if (field->Name().empty() || field->Name() != name) continue;
    field->SetValue(value);
    found = true;
  }
  return found;
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
  const Fields& distribution = documents_.distribution->Fields();
  const Fields& server = documents_.server->Fields();
  for (int i = 0; i < distribution.Count(); ++i) {
    const auto found = server.Field(distribution.Field(i)->Name());
    if (!found->Name().empty()) actualFields_.Fields().AddField(found->Name(), found->Value());
  }

  const Fields& offered = documents_.distributionSeries->Fields();
  for (int i = 0; i < offered.Count(); ++i) {
    AppendCopy(*offered.Field(i), actualSeries_);
    actualSeries_.Fields().Field(i)->Parameters().Parameter(kDisabled)->SetValue(u"0");
  }
  const Fields& present = documents_.serverSeries->Fields();
  for (int i = 0; i < present.Count(); ++i) {
    const auto entry = present.Field(i);
    const auto known = actualSeries_.Fields().Field(entry->Name());
    if (known->Name().empty()) {
      AppendCopy(*entry, actualSeries_);
    } else {
      known->Parameters().Parameter(kDisabled)->SetValue(u"1");
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
  AddMissingSeries(*documents_.distributionSeries, *documents_.serverSeries);
  documents_.server->Fields().Sort(true);
  SeriesGroups groups(*documents_.serverSeries);
  if (groups.GroupCount() > SeriesGroups::kMostGroups) {
    ShowMessage(messages, String(language.Text(Message::kTooManySeries)), message_style::kCritical);
    throw EndApplication();
  }
  return groups;
}

bool ChangeComparison::HasListChanges() const {
  return deletedFields_.Fields().Count() > 0 || newFields_.Fields().Count() > 0;
}

bool ChangeComparison::IsMandatory(StringView name) const {
  const auto field = documents_.distribution->Fields().Field(name);
  return field->Parameters().Parameter(kDisabled)->Value() == u"1";
}

bool ChangeComparison::StartsChecked(StringView name) const {
  const auto field = documents_.distribution->Fields().Field(name);
  return ToInteger(field->Parameters().Parameter(kDisabled)->Value()) > 0;
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
      const Button answer = ShowMessage(messages, String(language.Text(Message::kRemoveMandatory)),
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
  return SetValue(newFields_, name, value);
}

bool ChangeComparison::SetActualValue(StringView name, StringView value) {
  return SetValue(actualFields_, name, value);
}

}  // namespace quenmar
