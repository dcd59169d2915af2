#include "docmodel/Documents.h"

#include <utility>

#include "docmodel/Document.h"
#include "text/CaseFolding.h"

namespace quenmar {

namespace {

bool Satisfies(const Document& node, StringView condition) {
  const size_t equals = condition.find(u'=');
  StringView name = condition.substr(0, equals);
  StringView value = equals == StringView::npos ? StringView() : condition.substr(equals + 1);
  if (value.size() >= 2 && value.front() == u'\'' && value.back() == u'\'') {
    value = value.substr(1, value.size() - 2);
  }
  if (!name.starts_with(u'.')) return node.Parameters().Parameter(name)->Value() == value;
  name.remove_prefix(1);
  return node.Fields().Field(name)->Value() == value;
}

bool SatisfiesAll(const Document& node, StringView sParameters) {
  if (sParameters.empty()) return true;
  for (const StringView condition : Split(sParameters, u',')) {
    if (!Satisfies(node, condition)) return false;
  }
  return true;
}

bool HasName(const Document& node, StringView name, bool ignoreCase) {
  return ignoreCase ? EqualIgnoringCase(node.Name(), name) : node.Name() == name;
}

}  // namespace

int Documents::Find(const NameOrIndex& nameOrIndex, int occurrence) const {
  if (!nameOrIndex.IsName()) return PositionOf(nameOrIndex.Index());
  int rank = 0;
  return FindFirst([&](const Document& child) {
    return EqualIgnoringCase(child.Name(), nameOrIndex.Name()) && rank++ == occurrence;
  });
}

Documents::Pointer Documents::Child(const NameOrIndex& nameOrIndex, int occurrence) const {
  return At(Find(nameOrIndex, occurrence));
}

int Documents::AddChild(StringView name) {
  int atEnd = kNone;
  return AddChild(name, atEnd);
}

int Documents::AddChild(StringView name, int& index) {
  if (index < 0) index = Count();
  if (index > Count()) {
    throw DocError(DocError::kSubscriptOutOfRange, u"Documents", u"Subscript out of range");
  }
  // Grow first, then name: callers that catch a rejected name find the unnamed element in place.
  const Pointer added = *elements_.insert(elements_.begin() + index, std::make_shared<Document>());
  added->SetName(name);
  return index;
}

bool Documents::RemoveChild(const NameOrIndex& nameOrIndex, StringView sParameters) {
  int position = kNone;
  if (nameOrIndex.IsName()) {
    position = FindFirst([&](const Document& child) {
      return HasName(child, nameOrIndex.Name(), true) && SatisfiesAll(child, sParameters);
    });
  } else {
    position = PositionOf(nameOrIndex.Index());
    if (position != kNone && !SatisfiesAll(*At(position), sParameters)) position = kNone;
  }
  if (position == kNone) return false;
  elements_.erase(elements_.begin() + position);
  return true;
}

bool Documents::SetChild(const NameOrIndex& nameOrIndex, const Pointer& child) {
  const int position = Find(nameOrIndex, 0);
  if (position == kNone) return false;
  elements_[static_cast<size_t>(position)] = child;
  return true;
}

Documents::Pointer Documents::SearchChild2(StringView childName, bool ignoreCase) const {
  Pointer last;
  for (const Pointer& child : elements_) {
    if (HasName(*child, childName, ignoreCase)) last = child;
  }
  return last ? last : At(kNone);
}

Documents::Pointer Documents::SearchChild(StringView name, StringView sParameters, bool ignoreCase,
                                          bool multiLevelSearch) const {
  const std::vector<Pointer> found = GetChilds(name, sParameters, ignoreCase, multiLevelSearch);
  return found.empty() ? At(kNone) : found.front();
}

std::vector<Documents::Pointer> Documents::GetChilds(StringView name, StringView sParameters,
                                                     bool ignoreCase, bool multiLevelSearch) const {
  std::vector<Pointer> found;
  for (const Pointer& child : elements_) {
    if (HasName(*child, name, ignoreCase) && SatisfiesAll(*child, sParameters)) {
      found.push_back(child);
    }
  }
  if (!found.empty() || !multiLevelSearch) return found;
  for (const Pointer& child : elements_) {
    const auto below = child->Childs().GetChilds(name, sParameters, ignoreCase, true);
    found.insert(found.end(), below.begin(), below.end());
  }
  return found;
}

void Documents::Sort(bool ascendent) { SortByName(ascendent); }

}  // namespace quenmar
