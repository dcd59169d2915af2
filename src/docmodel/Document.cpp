#include "docmodel/Document.h"

#include "docmodel/NodeName.h"

namespace quenmar {

namespace {

constexpr StringView kWhiteSpace = u" \t\r\n";

}  // namespace

void Document::SetStopOnLoadError(bool stop) {
  if (stop == stopOnLoadError_) return;
  stopOnLoadError_ = stop;
  for (Document& child : childs_) child.SetStopOnLoadError(stop);
}

void Document::SetName(StringView name) {
  CheckName(name, {u"xDocument.Name", u"Name don't allow spaces", u"Illegal character in name"});
  name_ = name;
}

String Document::Version() const { return version_.empty() ? u"1.0" : version_; }

String Document::Encoding() const { return encoding_.empty() ? u"ISO-8859-1" : encoding_; }

std::shared_ptr<Document> Document::SearchChild(StringView name, StringView sParameters,
                                                bool ignoreCase) const {
  return childs_.SearchChild(name, sParameters, ignoreCase, false);
}

std::vector<std::shared_ptr<Document>> Document::GetChilds(StringView name, StringView sParameters,
                                                           bool ignoreCase,
                                                           bool multiLevelSearch) const {
  return childs_.GetChilds(name, sParameters, ignoreCase, multiLevelSearch);
}

bool Document::GetNextParameter(String& attributes, String& name, String& value) {
  const size_t equals = attributes.find(u'=');
  if (equals == String::npos) return false;
  const size_t open = attributes.find_first_not_of(kWhiteSpace, equals + 1);
  if (open == String::npos || (attributes[open] != u'"' && attributes[open] != u'\'')) return false;
  const size_t close = attributes.find(attributes[open], open + 1);
  if (close == String::npos) return false;

  name = Trim(StringView(attributes).substr(0, equals), kWhiteSpace);
  value = attributes.substr(open + 1, close - open - 1);
  attributes.erase(0, close + 1);
  return true;
}

}  // namespace quenmar
