#include "merge/FileMerge.h"

#include <algorithm>
#include <utility>

#include "compare/Renames.h"
#include "conf/Functions.h"
#include "docmodel/XmlText.h"
#include "files/FileError.h"
#include "files/Folder.h"

namespace quenmar {

namespace {

/// Whether steps of a kind change what a save writes.
bool Counts(FileMerge::Step step) { return step != FileMerge::Step::kNewValue; }

/// @return the names of the fields that are sought, each once, in tree order.
template <class IsSought>
std::vector<String> NamesIn(const Document& tree, IsSought isSought) {
  std::vector<String> names;
  std::set<StringView> seen;
  for (const Field& field : tree.Fields()) {
    if (seen.insert(field.Name()).second && isSought(field)) names.emplace_back(field.Name());
  }
  return names;
}

/// @return whether one of the fields of that name has the value.
bool HasValue(const Document& tree, const Field& sought) {
  if (tree.Fields().Field(sought.Name())->Value() == sought.Value()) return true;
  for (const Field& field : tree.Fields()) {
    if (field.Name() == sought.Name() && field.Value() == sought.Value()) return true;
  }
  return false;
}

}  // namespace

FileMerge::FileMerge(Request request, const MergeContext& context)
    : request_(std::move(request)), context_(context) {}

std::unique_ptr<FileMerge> FileMerge::Open(const Request& request, const MergeContext& context) {
  std::unique_ptr<FileMerge> merge(new FileMerge(request, context));
  return merge->Read() && merge->Prepare() ? std::move(merge) : nullptr;
}

bool FileMerge::CopyToServer(const Path& distribution, const Path& server,
                             const MergeContext& context) {
  Path place = distribution;
  try {
    const std::string bytes = ReadBytes(place);
    place = server;
    ReplaceBytes(place, bytes);
    return true;
  } catch (const FileError& error) {
    ShowError(context.messages, context.language, error.Description(), PathText(place));
    return false;
  }
}

bool FileMerge::Read() {
  const bool lacking = IsMissing(request_.server);
  const Path& source = lacking ? request_.distribution : request_.server;
  if (!ReadVersion(request_.distribution, documents_.distribution, documents_.distributionSeries,
                   distributionNotes_) ||
      !ReadVersion(source, documents_.server, documents_.serverSeries, serverNotes_)) {
    return false;
  }
  if (!ReadOldVersion()) return false;
  RememberServer();
  opened_.path = request_.server;
  if (!lacking) opened_.bytes = serverNotes_.file.Bytes();
  // A copy of the distribution's content would replace one that the user may need.
  opened_.copied = request_.begun;
  return true;
}

bool FileMerge::ReadVersion(const Path& path, std::shared_ptr<Document>& settings,
                            std::shared_ptr<Document>& series, ConfNotes& notes) const {
  if (request_.reading) request_.reading(path);
  const ConfReader reader(context_.options, context_.language, context_.messages,
                          request_.bareLineFeeds, request_.comments);
  return reader.LoadConfFile(path, settings, series, &notes);
}

/// A merge does not need the old version: only one that the user has named must be readable.
bool FileMerge::ReadOldVersion() {
  const OldFile found = FindOldFile(request_.base, request_.seen, request_.server);
  ConfNotes notes;
  old_ = OldVersion::Read(found, context_.options, context_.language, notes);
  if (notes.reason.empty()) return true;
  ShowError(context_.messages, context_.language, notes.reason,
            PlaceOfError(found.path, notes, context_.language));
  return !found.named;
}

bool FileMerge::Prepare() {
  const bool sorted = context_.options.IsSorted(request_.layout);
  if (request_.purpose == Purpose::kCompare) {
    comparison_.emplace(documents_, sorted);
    comparison_->FillResultTrees();
    renames_ = FindRenames(comparison_->NewFields(), comparison_->DeletedFields());
    series_ = comparison_->FillSeries(context_.messages, context_.language);
    return true;
  }
  documents_.distributionSeries->Fields().Sort(true);
  documents_.serverSeries->Fields().Sort(true);
  if (sorted) documents_.server->Fields().Sort(true);
  series_ = SeriesGroups::OfBoth(*documents_.distributionSeries, *documents_.serverSeries);
  RememberSaved();
  if (!series_.TooMany()) return true;
  ShowMessage(context_.messages, context_.language.Text(Message::kTooManySeries),
              message_style::kOk | message_style::kCritical);
  return false;
}

void FileMerge::RememberServer() {
  int index = 0;
  for (const Field& field : documents_.server->Fields()) {
    const bool active = serverNotes_.active.at(static_cast<size_t>(index++)) != 0;
    onServer_.try_emplace(String(field.Name()),
                          OpenedSetting{String(field.Value()), active, active});
  }
}

void FileMerge::RememberSaved() {
  saved_.clear();
  for (const Field& field : documents_.server->Fields()) {
    saved_.push_back({field.Value(), IsWantedActive(field.Name())});
  }
}

const Document& FileMerge::Tree(List list) const {
  if (list == List::kKept) return comparison_->ActualFields();
  return list == List::kNew ? comparison_->NewFields() : comparison_->DeletedFields();
}

ReleaseChanges FileMerge::FindChanges() const {
  if (!old_) return {};
  return FindReleaseChanges(*old_, {*documents_.distribution, *documents_.distributionSeries},
                            {SavedSettings(), *documents_.serverSeries});
}

std::vector<DefaultChange> FileMerge::DefaultChanges() const {
  std::vector<DefaultChange> changes = FindChanges().defaults;
  // One that is only now being added was never the server's.
  std::erase_if(changes,
                [this](const DefaultChange& change) { return !onServer_.contains(change.name); });
  return changes;
}

std::optional<DefaultChange> FileMerge::DefaultChangeOf(StringView name) const {
  if (!old_ || !onServer_.contains(String(name))) return std::nullopt;
  const auto setting = SavedSettings().Fields().Field(name);
  if (setting->Name().empty()) return std::nullopt;  // no longer kept
  return FindDefaultChange(*old_, *documents_.distribution, *setting);
}

std::vector<SeriesEntry> FileMerge::WithdrawnEntries() const {
  std::vector<SeriesEntry> entries = FindChanges().withdrawn;
  std::erase_if(entries, [this](const SeriesEntry& entry) { return !IsOn(entry); });
  return entries;
}

bool FileMerge::IsOn(const SeriesEntry& entry) const {
  for (int group = 0; group < series_.GroupCount(); ++group) {
    if (series_.Type(group) != entry.type) continue;
    for (int item = 0; item < series_.ItemCount(group); ++item) {
      if (series_.List(group, item) == entry.name) return series_.Selected(group, item);
    }
  }
  return false;
}

String FileMerge::Comment(StringView name) const {
  const auto commentIn = [name](const Document& tree) {
    return String(CommentOf(*tree.Fields().Field(name)));
  };
  if (request_.purpose == Purpose::kEdit) {
    String comment = commentIn(*documents_.server);
    return std::move(XmlUnescape(comment));
  }
  String comment = commentIn(*documents_.distribution);
  return comment.empty() ? commentIn(*documents_.server) : comment;
}

String FileMerge::DistributionComment(StringView name) const {
  const SharedText comment = CommentOf(*documents_.distribution->Fields().Field(name));
  String shown(comment);
  if (request_.purpose == Purpose::kEdit) XmlUnescape(shown);
  return shown == Comment(name) ? String() : shown;
}

std::optional<String> FileMerge::RenamedFrom(StringView name) const {
  const auto pair = renames_.find(String(name));
  if (pair == renames_.end() || comparison_->NewFields().Fields().IndexOf(name) < 0 ||
      comparison_->DeletedFields().Fields().IndexOf(pair->second) < 0) {
    return std::nullopt;
  }
  return pair->second;
}

std::vector<String> FileMerge::MissingMandatory() const {
  return NamesIn(comparison_->NewFields(), [this](const Field& field) {
    return !IsKept(field) && IsMandatory(field.Name());
  });
}

bool FileMerge::IsKept(const Field& field) const {
  return comparison_->ActualFields().Fields().IndexOf(field.Name()) >= 0;
}

std::vector<String> FileMerge::TypedNotAdded() const {
  return NamesIn(comparison_->NewFields(),
                 [this](const Field& field) { return !HasValue(*documents_.distribution, field); });
}

bool FileMerge::IsWantedActive(StringView name) const {
  if (request_.layout == Layout::kSettings) return true;
  const String key(name);
  if (const auto chosen = switched_.find(key); chosen != switched_.end()) return chosen->second;
  const auto onServer = onServer_.find(key);
  if (onServer == onServer_.end() || onServer->second.active) return true;
  const auto setting = SavedSettings().Fields().Field(name);
  return edited_.contains(key) && StringView(setting->Value()) != onServer->second.value;
}

FileMerge::SettingState FileMerge::StateOf(StringView name) const {
  if (!IsWantedActive(name)) return SettingState::kCommentedOut;
  const auto onServer = onServer_.find(String(name));
  const bool inFile = onServer == onServer_.end() || onServer->second.activeInFile;
  return inFile ? SettingState::kActive : SettingState::kBecomesActive;
}

bool FileMerge::IsEdited(int index) const {
  const auto setting = documents_.server->Fields().Field(index);
  const SavedSetting& saved = saved_.at(static_cast<size_t>(index));
  return StringView(setting->Value()) != StringView(saved.value) ||
         IsWantedActive(setting->Name()) != saved.wantedActive;
}

bool FileMerge::IsChanged(int index) const {
  const auto setting = documents_.server->Fields().Field(index);
  const auto original = documents_.distribution->Fields().Field(setting->Name());
  return !original->Name().empty() && setting->Value() != original->Value();
}

bool FileMerge::IsShown(int index, const SettingFilter& filter) const {
  if (filter.ShowsAll()) return true;
  const auto setting = documents_.server->Fields().Field(index);
  const auto original = documents_.distribution->Fields().Field(setting->Name());
  String originalComment(CommentOf(*original));
  const String comments =
      Comment(setting->Name()).append(kLineEnd).append(XmlUnescape(originalComment));
  return filter.Shows(ItemOf(*setting, *original, comments));
}

SettingFilter::Item FileMerge::ItemOf(const Field& setting, const Field& original,
                                      StringView comment) const {
  return {setting.Name(),
          setting.Value(),
          original.Value(),
          comment,
          !original.Name().empty(),
          StateOf(setting.Name()) != SettingState::kActive,
          DefaultChangeOf(setting.Name()).has_value()};
}

template <class Change>
int FileMerge::Do(Step step, const String& topic, Change change) {
  std::optional<State> before;
  if (!history_.Continues(topic)) before = Capture();
  const int changed = change();
  if (changed > 0 && before) history_.Add(step, Counts(step), topic, std::move(*before));
  return changed;
}

int FileMerge::Add(const std::vector<String>& names) {
  return Do(Step::kMove, {}, [&] { return comparison_->Add(names); });
}

int FileMerge::Remove(const std::vector<String>& names) {
  return Do(Step::kMove, {},
            [&] { return comparison_->Remove(names, context_.messages, context_.language); });
}

int FileMerge::Restore(const std::vector<String>& names) {
  return Do(Step::kMove, {}, [&] { return comparison_->Restore(names); });
}

int FileMerge::AddMandatory() { return Add(MissingMandatory()); }

int FileMerge::AddAll() {
  return Add(
      NamesIn(comparison_->NewFields(), [this](const Field& field) { return !IsKept(field); }));
}

bool FileMerge::TakeOldValue(StringView name) {
  const auto old = RenamedFrom(name);
  if (!old) return false;
  (void)Do(Step::kMove, {}, [&] {
    const SharedText value = comparison_->DeletedFields().Fields().Field(*old)->Value();
    comparison_->SetNewValue(name, value);
    return comparison_->Add({String(name)});
  });
  return true;
}

bool FileMerge::SetValue(List list, StringView name, StringView value) {
  const bool isNew = list == List::kNew;
  const String topic = u"value " + String(name);
  const int changed = Do(isNew ? Step::kNewValue : Step::kValue, topic, [&] {
    if (isNew) return comparison_->SetNewValue(name, value) ? 1 : 0;
    if (!comparison_->SetActualValue(name, value)) return 0;
    edited_.emplace(name);
    return 1;
  });
  return changed > 0;
}

void FileMerge::SetServerValue(int index, StringView value) {
  const auto setting = documents_.server->Fields().Field(index);
  (void)Do(Step::kValue, u"server " + ToText(index), [&] {
    if (setting->Value() == value) return 0;
    edited_.emplace(setting->Name());
    setting->SetValue(value);
    GiveAllLines({{setting->Name(), value}});
    return 1;
  });
}

int FileMerge::ResetServerValues(const std::vector<int>& indexes) {
  return Do(Step::kValue, {}, [&] {
    std::map<StringView, SharedText> given;  // by name
    int changed = 0;
    for (const int index : indexes) {
      const auto setting = documents_.server->Fields().Field(index);
      const auto original = documents_.distribution->Fields().Field(setting->Name());
      if (original->Name().empty() || original->Value() == setting->Value()) continue;
      edited_.emplace(setting->Name());
      setting->SetValue(original->Value());
      given.emplace(setting->Name(), original->Value());
      ++changed;
    }
    GiveAllLines(given);
    return changed;
  });
}

int FileMerge::TakeDefaults(const std::vector<String>& names) {
  const std::set<StringView> wanted(names.begin(), names.end());
  return GiveDefaults(
      [&wanted](const DefaultChange& change) { return wanted.contains(change.name); });
}

int FileMerge::TakeUntouchedDefaults() {
  return GiveDefaults(std::mem_fn(&DefaultChange::IsUntouched));
}

template <class IsWanted>
int FileMerge::GiveDefaults(IsWanted isWanted) {
  return Do(Step::kValue, {}, [&] {
    const std::vector<DefaultChange> changes = DefaultChanges();
    std::map<StringView, SharedText> given;
    for (const DefaultChange& change : changes) {
      if (!isWanted(change)) continue;
      given.emplace(change.name, change.newDefault);
      edited_.erase(change.name);  // a value that is given by hand would make the setting active
    }
    comparison_->SetActualValues(given);
    return static_cast<int>(given.size());
  });
}

void FileMerge::GiveAllLines(const std::map<StringView, SharedText>& values) {
  if (request_.layout == Layout::kSettings || values.empty()) return;
  for (Field& setting : documents_.server->Fields()) {
    const auto value = values.find(setting.Name());
    if (value != values.end()) setting.SetValue(value->second);
  }
}

void FileMerge::SetEntry(int group, int item, bool on) {
  (void)Do(Step::kSeries, {}, [&] {
    if (series_.Selected(group, item) == on) return 0;
    series_.SetSelected(group, item, on);
    return 1;
  });
}

bool FileMerge::SwitchSetting(StringView name, bool active) {
  return SwitchSettings({String(name)}, active).empty();
}

std::vector<String> FileMerge::SwitchSettings(const std::vector<String>& names, bool active) {
  std::vector<String> refused;
  (void)Do(Step::kState, {}, [&] {
    int switched = 0;
    for (const String& name : names) {
      if (!active && IsNoteName(name)) {
        refused.push_back(name);
      } else if (request_.layout != Layout::kSettings && IsWantedActive(name) != active) {
        switched_[name] = active;
        ++switched;
      }
    }
    return switched;
  });
  return refused;
}

FileMerge::State FileMerge::Capture() const {
  State state;
  if (comparison_) state.lists = comparison_->CaptureLists();
  if (request_.purpose == Purpose::kEdit) {
    for (const Field& field : documents_.server->Fields()) {
      state.serverValues.push_back(field.Value());
    }
  }
  state.series = series_;
  state.switched = switched_;
  state.edited = edited_;
  return state;
}

void FileMerge::Swap(State& state) {
  State current = Capture();
  if (comparison_) comparison_->SetLists(state.lists);
  for (size_t i = 0; i < state.serverValues.size(); ++i) {
    documents_.server->Fields().Field(static_cast<int>(i))->SetValue(state.serverValues[i]);
  }
  series_ = std::move(state.series);
  switched_ = std::move(state.switched);
  edited_ = std::move(state.edited);
  state = std::move(current);
}

void FileMerge::Undo() {
  if (CanUndo()) history_.Undo([this](State& state) { Swap(state); });
}

void FileMerge::Redo() {
  if (CanRedo()) history_.Redo([this](State& state) { Swap(state); });
}

std::optional<FileMerge::Step> FileMerge::UnsavedStep() const { return history_.Unsaved(); }

const Document& FileMerge::SavedSettings() const {
  return request_.purpose == Purpose::kEdit ? *documents_.server : comparison_->ActualFields();
}

SavePlan FileMerge::Plan() const {
  const OpenedFile onDisk = OpenedFile::FromDisk(request_.server);
  return PlanOver({request_.server, onDisk.bytes.value_or(std::string())});
}

SavePlan FileMerge::PlanOver(const ConfFile& before) const {
  return SavePlan::Of(
      {request_.layout, distributionNotes_.file, serverNotes_.file, *documents_.distribution,
       SavedSettings(), series_, [this](StringView name) { return IsWantedActive(name); }},
      before, context_.options, context_.language);
}

bool FileMerge::Save(const SavePlan& plan) {
  const ConfWriter writer(context_.options, context_.language, context_.messages);
  if (!writer.SaveBytes(opened_, plan.bytes)) return false;
  history_.MarkSaved();
  KeepSeen();
  for (auto& [name, setting] : onServer_) {
    setting.activeInFile = IsWantedActive(name);
    // A new value has made it active, which it stays, also with its first value.
    if (setting.activeInFile && !setting.active) switched_[name] = true;
  }
  if (request_.purpose == Purpose::kEdit) RememberSaved();
  return true;
}

void FileMerge::Close() {
  if (!remembered_ && !IsModified() && DefaultChanges().empty() && WithdrawnEntries().empty())
    KeepSeen();
}

void FileMerge::KeepSeen() {
  if (request_.seen == nullptr || request_.purpose != Purpose::kCompare) return;
  remembered_ = true;
  const String reason = request_.seen->Keep(request_.server, distributionNotes_.file);
  if (reason.empty()) return;
  ShowMessage(context_.messages, context_.language.Text(Message::kNotRemembered),
              message_style::kOk, {reason});
}

void FileMerge::TellFailure(const std::exception& error) const {
  ConfWriter(context_.options, context_.language, context_.messages)
      .TellFailure(request_.server, error);
}

}  // namespace quenmar
