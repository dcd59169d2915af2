#include "app/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <algorithm>
#include <utility>

#include "app/Overview.h"
#include "conf/EndApplication.h"
#include "conf/Functions.h"
#include "editor/NEditForm.h"
#include "files/Folder.h"
#include "merge/StateFolder.h"
#include "updater/frmUpdaterX.h"
#include "widgets/CheckBox.h"
#include "widgets/FolderBox.h"
#include "widgets/QtText.h"
#include "widgets/ShownCursor.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

namespace {

template <class Widget>
Widget* Named(Widget* widget, const char* name) {
  widget->setObjectName(name);
  return widget;
}

}  // namespace

Main::Main(Registry& registry, const Language& language, MessageBoxes& messages,
           FolderPicker picker, const std::optional<Folders>& folders)
    : registry_(registry),
      language_(language),
      messages_(messages),
      picker_(std::move(picker)),
      options_(LoadOptions(registry)),
      seenFiles_(StateFolder()) {
  CreateControls();
  SetCaptions();
  LayOut();
  Connect();
  SetFolders(folders);
}

void Main::CreateControls() {
  setObjectName("Main");
  frame_ = Named(new QGroupBox, "Frame1");
  distributionLabel_ = Named(new QLabel, "Label1");
  distribution_ = Named(new FolderBox, "txt_FileFrom");
  browseDistribution_ = Named(new QPushButton, "Command1");
  serverLabel_ = Named(new QLabel, "Label2");
  server_ = Named(new FolderBox, "txt_FileTo");
  browseServer_ = Named(new QPushButton, "Command2");
  filesLabel_ = Named(new QLabel, "Label4");
  files_ = Named(new QComboBox, "ConfFiles");
  sort_ = Named(new CheckBox, "Check1");
  layoutLabel_ = Named(new QLabel, "lblLayout");
  layout_ = Named(new QComboBox, "cmbLayout");
  edit_ = Named(new QPushButton, "Command3");
  checkChanges_ = Named(new QPushButton, "Command5");
  close_ = Named(new QPushButton, "Command4");
  overview_ = new Overview(options_, language_, seenFiles_);
  distributionLabel_->setBuddy(distribution_);
  serverLabel_->setBuddy(server_);
  filesLabel_->setBuddy(files_);
  layoutLabel_->setBuddy(layout_);
  edit_->setEnabled(false);
  checkChanges_->setEnabled(false);
  sort_->setChecked(options_.sort == 1);
  sort_->setEnabled(options_.layout == Layout::kSettings);
}

void Main::SetCaptions() {
  setWindowTitle(Text(Message::kWindowTitle));
  frame_->setTitle(Caption(Message::kPath));
  distributionLabel_->setText(Caption(Message::kDistributionFolder));
  serverLabel_->setText(Caption(Message::kServerFolder));
  filesLabel_->setText(Caption(Message::kConfigFile));
  // The check box that sorts has this caption and not `kSortParameterList`: translations expect it.
  sort_->setText(Caption(Message::kSelectFile));
  edit_->setText(Caption(Message::kEdit));
  checkChanges_->setText(Caption(Message::kCheckChanges));
  close_->setText(Caption(Message::kClose));
  for (auto [button, key] : {std::pair(browseDistribution_, Message::kDistributionFolder),
                             std::pair(browseServer_, Message::kServerFolder)}) {
    button->setText("...");
    button->setAccessibleName(Text(key) + " ...");
    button->setToolTip(Text(key));
  }
  layoutLabel_->setText(Caption(Message::kWhenSaving));
  OfferLayouts();
}

/// The tool tip begins with the key that opens the list.
void Main::OfferLayouts() {
  QStringList hints(QKeySequence(Qt::ALT | Qt::Key_Down).toString(QKeySequence::NativeText));
  for (const auto& [name, hint] :
       {std::pair(Message::kSettingsOnly, Message::kSettingsOnlyHint),
        std::pair(Message::kKeepServerLines, Message::kKeepServerLinesHint),
        std::pair(Message::kKeepDistributionLines, Message::kKeepDistributionLinesHint)}) {
    layout_->addItem(Text(name));
    layout_->setItemData(layout_->count() - 1, ToToolTip(Text(hint)), Qt::ToolTipRole);
    hints << Text(name) + ": " + Text(hint);
  }
  layout_->setToolTip(ToToolTip(hints.join('\n')));
  layout_->setCurrentIndex(static_cast<int>(options_.layout));
}

void Main::LayOut() {
  auto* const folders = new QGridLayout(frame_);
  folders->addWidget(distributionLabel_, 0, 0);
  folders->addWidget(distribution_, 0, 1);
  folders->addWidget(browseDistribution_, 0, 2);
  folders->addWidget(serverLabel_, 1, 0);
  folders->addWidget(server_, 1, 1);
  folders->addWidget(browseServer_, 1, 2);
  folders->setColumnStretch(1, 1);

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(edit_);
  buttons->addWidget(checkChanges_);
  buttons->addStretch();
  buttons->addWidget(close_);

  auto* const file = new QHBoxLayout;
  file->addWidget(filesLabel_);
  file->addWidget(files_, 1);

  auto* const saving = new QHBoxLayout;
  saving->addWidget(layoutLabel_);
  saving->addWidget(layout_);
  saving->addStretch();

  auto* const all = new QVBoxLayout(this);
  all->addWidget(frame_);
  all->addLayout(file);
  all->addLayout(saving);
  all->addWidget(sort_);
  all->addLayout(buttons);
  all->addWidget(overview_, 1);
  // The sort check box comes last, although it is above the buttons: it is rarely needed.
  auto* const table = overview_->findChild<QTableView*>();
  const QList<QWidget*> order = {
      distribution_, browseDistribution_, server_, browseServer_, files_,
      edit_,         checkChanges_,       close_,  sort_,         layout_,
      table};
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);

  const QFontMetrics letters = fontMetrics();
  const int columns = table->horizontalHeader()->length() + 4 * letters.averageCharWidth();
  resize(std::max(140 * letters.averageCharWidth(), columns),
         sizeHint().height() + 16 * letters.height());
  new WindowGeometry(this, "Main");
}

void Main::Connect() {
  connect(browseDistribution_, &QPushButton::clicked, this,
          [this] { Pick(*distribution_, Message::kDistributionFolder); });
  connect(browseServer_, &QPushButton::clicked, this,
          [this] { Pick(*server_, Message::kServerFolder); });
  connect(this, &Main::Activated, this, &Main::Reread, Qt::QueuedConnection);
  for (FolderBox* const box : {distribution_, server_}) {
    connect(box, &FolderBox::FolderChanged, this, [this, box] { CheckFolder(*box); });
    connect(box, &FolderBox::Left, this, [this, box] {
      // A message beside the folder picker would be in the way; the text waits.
      if (!busy_) box->Complete();
    });
    // A message must not block the program that the folder was dragged from.
    connect(
        box, &FolderBox::FolderDropped, this,
        [this, box](const QString& folder) { Store(*box, folder); }, Qt::QueuedConnection);
  }
  connect(sort_, &QCheckBox::clicked, this, [this](bool checked) {
    options_.sort = checked ? 1 : 0;
    StoreSort(registry_, options_.sort);
    overview_->Refresh();
  });
  connect(layout_, &QComboBox::currentIndexChanged, this,
          [this](int index) { ChooseLayout(static_cast<Layout>(index)); });
  connect(edit_, &QPushButton::clicked, this, [this] { Run(&Main::Edit); });
  connect(checkChanges_, &QPushButton::clicked, this, [this] { Run(&Main::CheckChanges); });
  connect(close_, &QPushButton::clicked, this, &QWidget::close);
  ConnectOverview();
}

/// A row and the list of files select each other.
void Main::ConnectOverview() {
  connect(files_, &QComboBox::currentIndexChanged, this, &Main::SelectInOverview);
  connect(overview_, &Overview::FileSelected, this, &Main::SelectFile);
  connect(overview_, &Overview::CheckChangesWanted, checkChanges_, &QPushButton::click);
  connect(overview_, &Overview::EditWanted, edit_, &QPushButton::click);
  connect(overview_, &Overview::DiskChanged, this, &Main::FollowDisk);
}

bool Main::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) emit Activated();
  return QWidget::event(event);
}

void Main::keyPressEvent(QKeyEvent* event) {
  auto* const button = qobject_cast<QPushButton*>(focusWidget());
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && button != nullptr) {
    button->click();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void Main::SetFolders(const std::optional<Folders>& folders) {
  const QString distribution = folders ? folders->distribution : ToQString(options_.svnPath);
  const QString server = folders ? folders->server : ToQString(options_.serverPath);
  // A box that stays empty has no new text to check.
  if (!distribution.isEmpty()) distribution_->SetFolder(distribution);
  if (!server.isEmpty()) server_->SetFolder(server);
  checks_ = LookAtFolders();
  ShowOverview();
}

void Main::ChooseLayout(Layout layout) {
  options_.layout = layout;
  StoreLayout(registry_, layout);
  sort_->setEnabled(layout == Layout::kSettings);
  overview_->Refresh();
}

Main::FolderChecks Main::LookAtFolders() const {
  const String distribution = FromQString(distribution_->Folder());
  const String server = FromQString(server_->Folder());
  return {CheckDistributionFolder(distribution, server), CheckServerFolder(distribution, server)};
}

void Main::CheckFolder(FolderBox& box) {
  checks_ = LookAtFolders();
  const FolderCheck check = &box == distribution_ ? checks_.distribution : checks_.server;
  Take(check);
  ShowOverview();
  Refuse(box, check);
}

void Main::Reread() {
  if (busy_ || QApplication::activeModalWidget() != nullptr ||
      QApplication::activePopupWidget() != nullptr) {
    return;
  }
  const FolderChecks now = LookAtFolders();
  const FolderChecks before = std::exchange(checks_, now);
  if (now == before) {
    overview_->Refresh();
    return;
  }
  Take(now.distribution);
  Take(now.server);
  ShowOverview();
  if (now.distribution.message != before.distribution.message) {
    Refuse(*distribution_, now.distribution);
  } else if (now.server.message != before.server.message) {
    Refuse(*server_, now.server);
  }
}

void Main::Take(const FolderCheck& check) {
  if (check.files) ListFiles(*check.files);
  if (check.commands != FolderCheck::Commands::kUnchanged) {
    const bool enabled = check.commands == FolderCheck::Commands::kEnabled;
    edit_->setEnabled(enabled);
    checkChanges_->setEnabled(enabled);
  }
}

/// The chosen file stays chosen unless the folder is another one.
void Main::ListFiles(const std::vector<String>& files) {
  const bool sameFolder = listedFolder_ == distribution_->Folder();
  const QString chosen = sameFolder ? files_->currentText() : QString();
  listedFolder_ = distribution_->Folder();
  files_->clear();
  for (const String& file : files) files_->addItem(ToQString(file));
  SelectFile(chosen);
}

void Main::SelectFile(const QString& file) {
  files_->setCurrentIndex(files_->findText(file, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

void Main::SelectInOverview() { overview_->Select(FromQString(files_->currentText())); }

void Main::ShowOverview() {
  if (!checkChanges_->isEnabled()) {
    overview_->ShowReason(WhyNothingIsShown());
    return;
  }
  std::vector<String> files;
  files.reserve(static_cast<size_t>(files_->count()));
  for (int i = 0; i < files_->count(); ++i) files.push_back(FromQString(files_->itemText(i)));
  overview_->ShowFiles(FileIn(*distribution_, {}), FileIn(*server_, {}), files);
  SelectInOverview();
}

QString Main::WhyNothingIsShown() const {
  for (const auto& [box, check] :
       {std::pair(distribution_, &checks_.distribution), std::pair(server_, &checks_.server)}) {
    if (box->Folder().isEmpty() || !check->message) continue;
    return ToQString(FinishedText(language_.Text(*check->message), {check->placeholder}));
  }
  return Text(Message::kNoFilesYet);
}

void Main::FollowDisk() {
  const FolderChecks now = LookAtFolders();
  const bool newMessage = now.distribution.message != checks_.distribution.message ||
                          now.server.message != checks_.server.message;
  if (!newMessage || isActiveWindow()) Reread();
}

void Main::Refuse(FolderBox& box, const FolderCheck& check) {
  if (!check.message) return;
  ShowMessage(messages_, language_.Text(*check.message), message_style::kOk, {check.placeholder});
  // Otherwise "Close" may have the focus, as the buttons before it are disabled.
  box.setFocus();
}

void Main::CompleteBoxes() {
  distribution_->Complete();
  server_->Complete();
}

void Main::Pick(FolderBox& box, Message title) {
  QString folder;
  {
    const QScopedValueRollback busy(busy_, true);
    folder = picker_(this, Text(title), box.text());
  }
  if (!folder.isEmpty()) Store(box, folder);
  CompleteBoxes();
}

void Main::Store(FolderBox& box, const QString& folder) {
  box.SetFolder(folder);
  if (&box == distribution_) {
    StoreSvnPath(registry_, FromQString(box.Folder()));
  } else {
    StoreServerPath(registry_, FromQString(box.Folder()));
  }
}

void Main::Run(void (Main::*command)()) {
  CompleteBoxes();
  if (!edit_->isEnabled()) return;
  try {
    const QScopedValueRollback busy(busy_, true);
    (this->*command)();
  } catch (const EndApplication&) {
    QCoreApplication::exit(0);
    return;
  }
  // A question and the window behind it that close together may leave the focus nowhere.
  activateWindow();
  overview_->Forget(FromQString(files_->currentText()));
  Reread();
}

void Main::Edit() {
  const auto file = ChosenFile();
  if (!file) return;
  if (IsMissing(FileIn(*server_, *file))) {
    ShowMessage(messages_, language_.Text(Message::kNotOnServer), message_style::kOk,
                {*file, language_.Text(Message::kCheckChanges)});
    return;
  }
  std::optional<ShownCursor> busy(Qt::WaitCursor);
  const auto merge = Open(*file, FileMerge::Purpose::kEdit);
  if (!merge) return;
  NEditForm window(ContextOf(*merge, *file), this);
  window.LoadGrid();
  window.LoadSeries();
  busy.reset();
  window.exec();
}

void Main::CheckChanges() {
  const auto file = ChosenFile();
  if (!file) return;
  bool begun = false;
  if (IsMissing(FileIn(*server_, *file))) {
    if (ShowMessage(messages_, language_.Text(Message::kCopyNewFile),
                    message_style::kYesNo | message_style::kQuestion, {*file}) != Button::kYes) {
      return;
    }
    if (!FileMerge::CopyToServer(FileIn(*distribution_, *file), FileIn(*server_, *file), With())) {
      return;
    }
    begun = true;
  }
  std::optional<ShownCursor> busy(Qt::WaitCursor);
  const auto merge = Open(*file, FileMerge::Purpose::kCompare, begun);
  if (!merge) return;
  frmUpdaterX window(ContextOf(*merge, *file), this);
  window.FillLists();
  window.FillSeries();
  busy.reset();
  window.exec();
  merge->Close();
}

std::optional<String> Main::ChosenFile() {
  if (files_->currentIndex() >= 0) return FromQString(files_->currentText());
  ShowMessage(messages_, language_.Text(Message::kSelectFile), message_style::kOk);
  return std::nullopt;
}

Path Main::FileIn(const FolderBox& box, const String& file) {
  return PathFromText(JoinPath(FromQString(box.Folder()), file));
}

std::unique_ptr<FileMerge> Main::Open(const String& file, FileMerge::Purpose purpose, bool begun) {
  FileMerge::Request request;
  request.distribution = FileIn(*distribution_, file);
  request.server = FileIn(*server_, file);
  request.purpose = purpose;
  request.begun = begun;
  request.layout = options_.layout;
  if (request.layout != Layout::kSettings) {
    request.bareLineFeeds = ConfReader::BareLineFeeds::kEndLines;
  }
  request.seen = &seenFiles_;
  if (IsSame(request.distribution, request.server)) {
    ShowMessage(messages_, language_.Text(Message::kSameFolder), message_style::kOk);
    return nullptr;
  }
  return FileMerge::Open(request, With());
}

FileContext Main::ContextOf(FileMerge& merge, const String& file) const {
  return {merge, With(), FromQString(server_->Folder()), file};
}

QString Main::Caption(Message key) const { return ToCaption(language_.Text(key)); }

QString Main::Text(Message key) const { return ToQString(language_.Text(key)); }

}  // namespace quenmar
