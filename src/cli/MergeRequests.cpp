#include "cli/MergeRequests.h"

#include <algorithm>
#include <ostream>

#include "cli/Printable.h"
#include "conf/ConfLine.h"
#include "conf/Functions.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

using List = FileMerge::List;

std::vector<String> NamesIn(const Document& list) {
  std::vector<String> names;
  for (const Field& field : list.Fields()) names.emplace_back(field.Name());
  return names;
}

String ValidText(const std::string& argument, const char* option) {
  if (IsUtf8(argument)) return FromUtf8(argument);
  throw CommandError(std::string(option) + " " + ToUtf8(FromUtf8(argument)) +
                     ": this is not UTF-8 text");
}

}  // namespace

void MergeRequests::Apply(FileMerge& merge) {
  const Document& obsolete = merge.Tree(List::kObsolete);
  const Names chosen = Known(arguments_.restore, obsolete, "obsolete");
  merge.Restore(arguments_.restoreAll ? NamesIn(obsolete) : chosen);
  Add(merge);
  Remove(merge);
  taken_.clear();
  if (arguments_.takeDefaults) TakeDefaults(merge);
  for (const std::string& request : arguments_.set) SetValue(request, merge);
  for (const std::string& wanted : arguments_.switchOn) Switch(wanted, true, merge);
  for (const std::string& wanted : arguments_.switchOff) Switch(wanted, false, merge);
}

std::vector<std::string> MergeRequests::Unmatched() const {
  std::vector<std::string> unmatched;
  for (const auto* const wanted : {&arguments_.restore, &arguments_.add, &arguments_.remove,
                                   &arguments_.set, &arguments_.switchOn, &arguments_.switchOff}) {
    std::copy_if(wanted->begin(), wanted->end(), std::back_inserter(unmatched),
                 [this](const std::string& text) { return !matched_.contains(text); });
  }
  return unmatched;
}

bool MergeRequests::Knows(const std::string& wanted, const String& name, const Document& list,
                          const char* what) {
  const bool known = !list.Fields().Field(name)->Name().empty();
  if (known) matched_.insert(wanted);
  if (!known && !arguments_.all) {
    throw CommandError(ToUtf8(name) + " is not among the " + what + " settings");
  }
  return known;
}

/// @return the wanted names that the list has, once for each of its fields: a name may be in it
/// twice.
MergeRequests::Names MergeRequests::Known(const std::vector<std::string>& wanted,
                                          const Document& list, const char* what) {
  Names names;
  for (const std::string& argument : wanted) {
    const String name = FromUtf8(argument);
    if (Knows(argument, name, list, what)) names.push_back(name);
  }
  Names found;
  for (const Field& field : list.Fields()) {
    const auto hit = std::find(names.begin(), names.end(), field.Name());
    if (hit != names.end()) found.push_back(*hit);
  }
  return found;
}

void MergeRequests::Add(FileMerge& merge) {
  Names names = Known(arguments_.add, merge.Tree(List::kNew), "new");
  std::set<String> once;
  std::erase_if(names, [&once](const String& name) { return !once.insert(name).second; });
  merge.Add(names);
  if (arguments_.addMandatory) merge.AddMandatory();
  if (arguments_.addAll) merge.AddAll();
}

void MergeRequests::Remove(FileMerge& merge) {
  const Names leaving = Known(arguments_.remove, merge.Tree(List::kKept), "kept");
  const int left = merge.Remove(leaving);
  if (left < static_cast<int>(leaving.size())) throw CommandError(kDeclined);
}

void MergeRequests::TakeDefaults(FileMerge& merge) {
  for (const DefaultChange& change : merge.DefaultChanges()) {
    if (change.IsUntouched()) taken_.insert(change.name);
  }
  merge.TakeUntouchedDefaults();
}

void MergeRequests::SetValue(const std::string& request, FileMerge& merge) {
  const String text = ValidText(request, "--set");
  const size_t equals = text.find(u'=');
  if (equals == String::npos) throw CommandError("--set " + request + ": no = in it");
  const String name = text.substr(0, equals);
  const String value = text.substr(equals + 1);
  if (value.find_first_of(u"\r\n") != String::npos) {
    throw CommandError("--set " + ToUtf8(name) + ": a value is one line");
  }
  if (!Knows(request, name, merge.Tree(List::kKept), "kept")) return;
  merge.SetValue(List::kKept, name, value);
  taken_.erase(name);
  const String readBack = ReadBackValue(value);
  if (readBack != value) {
    context_.streams.err << "quenmarctl: --set " << Printable(name)
                         << ": the value will be read back as \"" << Printable(readBack) << "\"\n";
  }
}

void MergeRequests::Switch(const std::string& wanted, bool on, FileMerge& merge) {
  if (wanted.find(':') != std::string::npos) {
    SwitchEntry(wanted, on, merge);
    return;
  }
  const String name = ValidText(wanted, on ? "--switch-on" : "--switch-off");
  if (merge.SaveLayout() == Layout::kSettings) {
    throw CommandError(wanted +
                       ": with layout settings every setting is active; only a series "
                       "entry (TYPE:VALUE) can be switched");
  }
  if (!Knows(wanted, name, merge.Tree(List::kKept), "kept")) return;
  if (merge.SwitchSetting(name, on)) return;
  throw CommandError(
      ToUtf8(FinishedText(context_.language.Text(Message::kCannotSwitchOff), {name})));
}

void MergeRequests::SwitchEntry(const std::string& wanted, bool on, FileMerge& merge) {
  const String text = ValidText(wanted, on ? "--switch-on" : "--switch-off");
  const size_t colon = text.find(u':');
  const StringView type = StringView(text).substr(0, colon);
  const StringView value = Trim(StringView(text).substr(colon + 1));
  const SeriesGroups& series = merge.Series();
  for (int group = 0; group < series.GroupCount(); ++group) {
    for (int item = 0; item < series.ItemCount(group); ++item) {
      if (series.Type(group) != type || series.List(group, item) != value) continue;
      matched_.insert(wanted);
      if (series.Selected(group, item) != on) merge.SetEntry(group, item, on);
      return;
    }
  }
  if (!arguments_.all) throw CommandError(wanted + ": there is no such series entry");
}

}  // namespace quenmar
