#include "app/OverviewModel.h"

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <utility>

#include "widgets/Colours.h"
#include "widgets/DefaultRemark.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

constexpr std::array<Message, OverviewModel::kColumns> kHeaders = {
    Message::kColumnFile,     Message::kColumnState,    Message::kColumnNew,
    Message::kColumnChanged,  Message::kColumnInactive, Message::kColumnObsolete,
    Message::kColumnDefaults, Message::kColumnSeries,   Message::kColumnRemarks,
};

bool IsNumber(int column) {
  return column >= OverviewModel::kNew && column <= OverviewModel::kSeries;
}

/// @return how many settings or series entries a column of numbers counts.
size_t CountOf(const FileReport& report, int column) {
  switch (column) {
    case OverviewModel::kNew:
      return report.fresh.size();
    case OverviewModel::kChanged:
      return report.changed.size();
    case OverviewModel::kInactive:
      return report.inactive.size();
    case OverviewModel::kObsolete:
      return report.obsolete.size();
    case OverviewModel::kDefaults:
      return report.release.defaults.size();
    default:
      return report.newSeries.size() + report.obsoleteSeries.size();
  }
}

/// @return such as "+2 -1": entries of the distribution alone and of the server alone.
QString SeriesText(const FileReport& report) {
  QStringList parts;
  if (!report.newSeries.empty()) parts << QString("+%1").arg(report.newSeries.size());
  if (!report.obsoleteSeries.empty()) parts << QString("-%1").arg(report.obsoleteSeries.size());
  return parts.join(' ');
}

template <class Settings>
QStringList NamesOf(const Settings& settings) {
  QStringList names;
  for (const auto& setting : settings) names << ToQString(setting.name);
  return names;
}

QStringList NewNames(const std::vector<NewSetting>& settings) {
  QStringList names;
  for (const NewSetting& setting : settings) {
    names << (setting.mandatory ? "[x] " : "[ ] ") + ToQString(setting.name);
  }
  return names;
}

/// @return such as "2 (1)": untouched settings, and in brackets those that the server has changed,
/// too.
QString DefaultsText(const FileReport& report) {
  const size_t untouched = report.DefaultCount(DefaultChange::Kind::kDefault);
  const size_t both = report.DefaultCount(DefaultChange::Kind::kBoth);
  if (both > 0) return QString("%1 (%2)").arg(untouched).arg(both);
  return untouched > 0 ? QString::number(untouched) : QString();
}

/// @return the settings with their old and new defaults, each behind the sign that the windows
/// have.
QStringList DefaultNames(const FileReport& report) {
  QStringList names;
  for (const DefaultChange& change : report.release.defaults) {
    names << ToQString(String(DefaultMark(change.kind)) + u' ' + change.name + u": " +
                       change.oldDefault + u" -> " + change.newDefault);
  }
  return names;
}

/// @return the entries of the distribution alone and of the server alone; of these, those that the
/// release has withdrawn have the sign of the windows.
QStringList SeriesNames(const FileReport& report) {
  QStringList names;
  const auto line = [](const SeriesEntry& entry) {
    return ToQString(entry.type) + ": " + ToQString(entry.name);
  };
  for (const SeriesEntry& entry : report.newSeries) names << "+ " + line(entry);
  for (const SeriesEntry& entry : report.obsoleteSeries) {
    const auto& withdrawn = report.release.withdrawn;
    const bool marked =
        std::any_of(withdrawn.begin(), withdrawn.end(),
                    [&entry](const SeriesEntry& other) { return other.name == entry.name; });
    names << "- " + line(entry) + (marked ? ' ' + ToQString(kWithdrawnMark) : QString());
  }
  return names;
}

/// @return the lines, of too many the first ones.
QString Shortened(QStringList lines) {
  constexpr qsizetype kMost = 25;
  if (lines.size() > kMost) lines = lines.first(kMost) << "...";
  return lines.join('\n');
}

}  // namespace

OverviewModel::OverviewModel(const Language& language, QObject* parent)
    : QAbstractTableModel(parent), language_(language) {}

void OverviewModel::List(const std::vector<String>& files) {
  std::vector<Row> rows;
  for (const String& file : files) {
    const int before = RowOf(file);
    rows.push_back(before < 0 ? Row{file, {}} : rows_[static_cast<size_t>(before)]);
  }
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

void OverviewModel::Take(const FileReport& report) {
  const int row = RowOf(report.file);
  if (row < 0) return;
  rows_[static_cast<size_t>(row)].report = report;
  emit dataChanged(index(row, 0), index(row, kColumns - 1));
}

int OverviewModel::RowOf(StringView file) const {
  const auto hit =
      std::find_if(rows_.begin(), rows_.end(), [file](const Row& row) { return row.file == file; });
  return hit == rows_.end() ? -1 : static_cast<int>(hit - rows_.begin());
}

const String& OverviewModel::FileAt(int row) const {
  return rows_.at(static_cast<size_t>(row)).file;
}

int OverviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int OverviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant OverviewModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_[static_cast<size_t>(index.row())];
  const int column = index.column();
  if (role == Qt::TextAlignmentRole && IsNumber(column)) {
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  }
  if (role == Qt::ForegroundRole && !(row.report && row.report->NeedsWork())) {
    return QuietText(QGuiApplication::palette());
  }
  if (column == kFile && (role == Qt::DisplayRole || role == kSortRole)) return ToQString(row.file);
  if (!row.report) return {};
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(*row.report, column);
    case Qt::ToolTipRole:
      return ToToolTip(Shortened(DetailsOf(*row.report, column)));
    case Qt::AccessibleDescriptionRole:
      return Shortened(DetailsOf(*row.report, column));
    case kSortRole:
      return SortKeyOf(*row.report, column);
    default:
      return {};
  }
}

QVariant OverviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
  if (role == Qt::DisplayRole) return Text(kHeaders.at(static_cast<size_t>(section)));
  if (role == Qt::TextAlignmentRole) {
    const Qt::Alignment side = IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft;
    return QVariant(side | Qt::AlignVCenter);
  }
  return {};
}

QString OverviewModel::TextOf(const FileReport& report, int column) const {
  if (column == kState) return StateOf(report.status);
  if (column == kRemarks) return RemarksOf(report).join(", ");
  if (column == kDefaults) return DefaultsText(report);
  if (column == kSeries) return SeriesText(report);
  const size_t count = CountOf(report, column);
  if (count == 0) return {};
  const size_t mandatory = column == kNew ? report.MandatoryCount() : 0;
  return mandatory > 0 ? QString("%1 (%2)").arg(count).arg(mandatory) : QString::number(count);
}

QVariant OverviewModel::SortKeyOf(const FileReport& report, int column) const {
  if (column == kState) return static_cast<int>(report.status);
  if (IsNumber(column)) return static_cast<int>(CountOf(report, column));
  return TextOf(report, column);
}

QStringList OverviewModel::DetailsOf(const FileReport& report, int column) const {
  switch (column) {
    case kFile:
    case kState:
      return report.NeedsWork() ? QStringList() : QStringList(Text(Message::kNothingToDo));
    case kNew:
      return NewNames(report.fresh);
    case kChanged:
      return NamesOf(report.changed);
    case kInactive:
      return NamesOf(report.inactive);
    case kObsolete:
      return NamesOf(report.obsolete);
    case kDefaults:
      return DefaultNames(report);
    case kSeries:
      return SeriesNames(report);
    case kRemarks:
      return RemarksOf(report);
    default:
      return {};
  }
}

QString OverviewModel::StateOf(FileStatus status) const {
  switch (status) {
    case FileStatus::kSame:
      return Text(Message::kStateSame);
    case FileStatus::kDifferent:
      return Text(Message::kStateDiffers);
    case FileStatus::kNew:
      return Text(Message::kStateNewFile);
    case FileStatus::kFailed:
      break;
  }
  return Text(Message::kStateUnreadable);
}

QStringList OverviewModel::RemarksOf(const FileReport& report) const {
  QStringList remarks;
  for (const String& remark : report.Remarks(language_)) remarks << ToQString(remark);
  return remarks;
}

QString OverviewModel::Text(Message key) const { return ToQString(language_.Text(key)); }

}  // namespace quenmar
