#include "app/Overview.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "widgets/Colours.h"
#include "widgets/QtText.h"
#include "widgets/RememberedState.h"

namespace quenmar {

namespace {

/// Sorts by the keys of the model; files with equal keys are in the order of their names.
class SortedFiles : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

 protected:
  [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
    if (left.data(sortRole()) != right.data(sortRole())) {
      return QSortFilterProxyModel::lessThan(left, right);
    }
    const auto file = [](const QModelIndex& index) {
      return index.siblingAtColumn(OverviewModel::kFile).data().toString();
    };
    const bool less = file(left).compare(file(right), Qt::CaseInsensitive) < 0;
    return sortOrder() == Qt::AscendingOrder ? less : !less;
  }
};

/// A table whose keys go over whole rows: letters search the names of the files, Home and End go to
/// the first and the last row.
class FileTable : public QTableView {
 public:
  void keyboardSearch(const QString& search) override {
    const QModelIndex file = currentIndex().siblingAtColumn(OverviewModel::kFile);
    selectionModel()->setCurrentIndex(file, QItemSelectionModel::NoUpdate);
    QTableView::keyboardSearch(search);
  }

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
    if (action != MoveHome && action != MoveEnd) return QTableView::moveCursor(action, modifiers);
    const int row = action == MoveHome ? 0 : model()->rowCount() - 1;
    return model()->index(row, std::max(0, currentIndex().column()));
  }
};

}  // namespace

Overview::Overview(const Options& options, const Language& language, const SeenFiles& seen,
                   QWidget* parent)
    : QWidget(parent),
      language_(language),
      reports_(options, language, seen, this),
      model_(language, this) {
  CreateTable();
  CreateColumns();
  CreateActions();
  CreateReason();
  CreateProgress();
  LayOut();
  Connect();
}

void Overview::CreateTable() {
  sorted_ = new SortedFiles(this);
  sorted_->setSourceModel(&model_);
  sorted_->setSortRole(OverviewModel::kSortRole);
  sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
  table_ = new FileTable;
  table_->setObjectName("tblFiles");
  table_->setAccessibleName(Text(Message::kConfigFile));
  table_->setModel(sorted_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setTabKeyNavigation(false);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
}

/// Columns are as wide as their headers and what they mostly contain.
void Overview::CreateColumns() {
  QHeaderView* const header = table_->horizontalHeader();
  header->setSectionsMovable(true);
  header->setHighlightSections(false);
  header->setSortIndicator(OverviewModel::kFile, Qt::AscendingOrder);
  const auto widen = [this, header](int column, const QString& text) {
    const int width = fontMetrics().horizontalAdvance(text + "00");  // with room beside it
    header->resizeSection(column, std::max(header->sectionSize(column), width));
  };
  for (int column = 0; column < OverviewModel::kColumns; ++column) {
    header->resizeSection(column, header->sectionSizeHint(column));
    widen(column, model_.headerData(column, Qt::Horizontal).toString());
  }
  widen(OverviewModel::kFile, "a-rather-long-name.conf");
  for (const int column : {OverviewModel::kNew, OverviewModel::kDefaults}) widen(column, "00 (00)");
  widen(OverviewModel::kSeries, "+00 -00");
  for (const Message state : {Message::kStateSame, Message::kStateDiffers, Message::kStateNewFile,
                              Message::kStateUnreadable}) {
    widen(OverviewModel::kState, Text(state));
  }
  header->setStretchLastSection(true);
  new RememberedState(header, "MainColumns" + QString::number(header->count()));
  table_->setSortingEnabled(true);
}

/// The context menu shows their keys, and so does the tool tip.
void Overview::CreateActions() {
  checkChanges_ =
      AddAction("CheckChanges", Message::kCheckChanges, {Qt::Key_Enter, Qt::Key_Return});
  edit_ = AddAction("Edit", Message::kEdit, {Qt::CTRL | Qt::Key_Enter, Qt::CTRL | Qt::Key_Return});
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);
  QStringList keys;
  for (const auto& [action, caption] :
       {std::pair(checkChanges_, Message::kCheckChanges), std::pair(edit_, Message::kEdit)}) {
    keys << Text(caption) + ": " + action->shortcut().toString(QKeySequence::NativeText);
  }
  table_->setToolTip(ToToolTip(keys.join('\n')));
}

QAction* Overview::AddAction(const char* name, Message caption, const QList<QKeySequence>& keys) {
  auto* const action = new QAction(ToCaption(language_.Text(caption)), this);
  action->setObjectName(name);
  action->setShortcuts(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  table_->addAction(action);
  return action;
}

void Overview::CreateReason() {
  reason_ = new QLabel;
  reason_->setObjectName("lblNoFiles");
  reason_->setAlignment(Qt::AlignCenter);
  reason_->setWordWrap(true);
  reason_->setTextFormat(Qt::PlainText);
  PaintReason();
}

void Overview::PaintReason() {
  QPalette quiet;
  quiet.setColor(QPalette::WindowText, QuietText(palette()));
  reason_->setPalette(quiet);
}

void Overview::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && reason_ != nullptr) PaintReason();
}

void Overview::CreateProgress() {
  progress_ = new QProgressBar;
  progress_->setObjectName("prgFiles");
  progress_->setAccessibleName(Text(Message::kCheckChanges));
  progress_->setTextVisible(false);
  progress_->setFixedHeight(std::max(3, fontMetrics().height() / 4));
  QSizePolicy policy = progress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);  // else the table would jump
  progress_->setSizePolicy(policy);
  progress_->hide();
}

/// The table takes the room that the window has left, even none.
void Overview::LayOut() {
  auto* const inside = new QVBoxLayout(table_->viewport());
  inside->addWidget(reason_);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins({});
  all->setSpacing(2);
  all->addWidget(table_, 1);
  all->addWidget(progress_);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
}

void Overview::Connect() {
  connect(&reports_, &FolderReports::Reported, &model_, &OverviewModel::Take);
  connect(&reports_, &FolderReports::Reported, progress_, &QWidget::show);
  connect(&reports_, &FolderReports::Progressed, this, &Overview::ShowProgress);
  connect(&reports_, &FolderReports::DiskChanged, this, &Overview::DiskChanged);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            if (selecting_ || !current.isValid()) return;
            // The row that the keyboard goes to first would not be selected.
            table_->selectRow(current.row());
            currentRow_ = current.row();
            emit FileSelected(ToQString(model_.FileAt(sorted_->mapToSource(current).row())));
          });
  connect(table_, &QTableView::doubleClicked, this, &Overview::CheckChangesWanted);
  connect(checkChanges_, &QAction::triggered, this, &Overview::CheckChangesWanted);
  connect(edit_, &QAction::triggered, this, &Overview::EditWanted);
}

void Overview::ShowFiles(const Path& distribution, const Path& server,
                         const std::vector<String>& files) {
  const QScopedValueRollback selecting(selecting_, true);
  if (!reports_.IsFor(distribution, server)) model_.List({});
  model_.List(files);
  reason_->hide();
  table_->setAccessibleDescription({});
  reports_.Read(distribution, server, files);
}

void Overview::ShowReason(const QString& reason) {
  const QScopedValueRollback selecting(selecting_, true);
  reports_.Stop();
  model_.List({});
  progress_->hide();
  reason_->setText(reason);
  reason_->show();
  table_->setAccessibleDescription(reason);
}

void Overview::Select(const String& file) {
  const QScopedValueRollback selecting(selecting_, true);
  const int row = model_.RowOf(file);
  const QModelIndex wanted = sorted_->mapFromSource(model_.index(row, 0));
  if (!wanted.isValid()) {
    table_->selectionModel()->clear();
  } else if (wanted.row() != table_->currentIndex().row()) {
    table_->selectRow(wanted.row());
    table_->scrollTo(wanted);
    currentRow_ = wanted.row();
  }
}

void Overview::ShowProgress(int done, int all) {
  progress_->setMaximum(all);
  progress_->setValue(done);
  if (done < all) return;
  progress_->hide();
  // What was saved may have moved the row to another place of the sorted table.
  const int row = table_->currentIndex().row();
  if (std::exchange(currentRow_, row) != row) table_->scrollTo(table_->currentIndex());
}

QString Overview::Text(Message key) const { return ToQString(language_.Text(key)); }

}  // namespace quenmar
