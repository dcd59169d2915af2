#include "grid/ColumnSettings.h"

namespace quenmar {

namespace {

constexpr StringView kType = u"Tipo";
constexpr StringView kLabel = u"Etiqueta";
constexpr StringView kReadOnly = u"ReadOnly";
constexpr int kReadOnlyField = 0;
constexpr int kFirstEntry = 1;

String ChildName(int col) { return u"CT_" + ToText(col); }

/// @return the position of the first list entry that `matches`, -1 when there is none.
template <class Predicate>
int FindEntry(const Document& child, Predicate matches) {
  for (int i = kFirstEntry; i < child.Fields().Count(); ++i) {
    if (matches(*child.Fields().Field(i))) return i;
  }
  return -1;
}

int FindLabel(const Document& child, StringView label) {
  return FindEntry(child, [label](const Field& entry) { return entry.Name() == label; });
}

}  // namespace

ColumnSettings::Child ColumnSettings::Find(int col) const {
  if (!tree_) return nullptr;
  Child child = tree_->Childs().Child(ChildName(col));
  return child->Name().empty() ? nullptr : child;
}

ColumnSettings::Child ColumnSettings::FindOrAdd(int col) {
  if (Child child = Find(col)) return child;
  if (!tree_) tree_ = std::make_unique<Document>();
  Child added = tree_->Childs().Child(tree_->Childs().AddChild(ChildName(col)));
  added->Fields().AddField(kReadOnly, u"0");
  return added;
}

String ColumnSettings::ParameterOf(int col, StringView name) const {
  const Child child = Find(col);
  return child ? String(child->Parameters().Parameter(name)->Value()) : String();
}

void ColumnSettings::SetParameter(int col, StringView name, StringView value) {
  Parameters& parameters = FindOrAdd(col)->Parameters();
  const auto parameter = parameters.Parameter(name);
  if (parameter->Name().empty()) {
    parameters.AddParameter(name, value);
  } else {
    parameter->SetValue(value);
  }
}

String ColumnSettings::Type(int col) const { return ParameterOf(col, kType); }

void ColumnSettings::SetType(int col, StringView type) { SetParameter(col, kType, type); }

bool ColumnSettings::ReadOnly(int col) const {
  const Child child = Find(col);
  return child && child->Fields().Field(kReadOnlyField)->Value() == u"1";
}

void ColumnSettings::SetReadOnly(int col, bool readOnly) {
  FindOrAdd(col)->Fields().Field(kReadOnlyField)->SetValue(readOnly ? u"1" : u"0");
}

String ColumnSettings::Etiqueta(int col) const { return ParameterOf(col, kLabel); }

void ColumnSettings::SetEtiqueta(int col, StringView label) { SetParameter(col, kLabel, label); }

std::vector<String> ColumnSettings::Labels(int col) const {
  std::vector<String> labels;
  const Child child = Find(col);
  if (!child) return labels;
  for (int i = kFirstEntry; i < child->Fields().Count(); ++i) {
    labels.emplace_back(child->Fields().Field(i)->Name());
  }
  return labels;
}

String ColumnSettings::ValueOf(int col, StringView label) const {
  const Child child = Find(col);
  const int entry = child ? FindLabel(*child, label) : -1;
  return entry < 0 ? String() : String(child->Fields().Field(entry)->Value());
}

std::optional<String> ColumnSettings::LabelOf(int col, StringView value) const {
  const Child child = Find(col);
  if (!child) return std::nullopt;
  const int entry =
      FindEntry(*child, [value](const Field& candidate) { return candidate.Value() == value; });
  if (entry < 0) return std::nullopt;
  return String(child->Fields().Field(entry)->Name());
}

void ColumnSettings::AddEntry(int col, StringView label, StringView value) {
  // A rejected name would leave an unnamed field behind, which the list would offer as a blank.
  Field().SetName(label);
  FindOrAdd(col)->Fields().AddField(label, value);
}

void ColumnSettings::RemoveEntry(int col, StringView label) {
  const Child child = Find(col);
  const int entry = child ? FindLabel(*child, label) : -1;
  if (entry >= 0) child->Fields().RemoveField(entry);
}

void ColumnSettings::Remove(int col) {
  if (tree_) tree_->Childs().RemoveChild(ChildName(col));
}

}  // namespace quenmar
