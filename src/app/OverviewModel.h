#pragma once

#include <QAbstractTableModel>
#include <optional>
#include <vector>

#include "compare/FileReport.h"

namespace quenmar {

/// The reports on all files as a table, a row for each file. A file without a report yet has only
/// its name.
class OverviewModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column {
    kFile,
    kState,
    kNew,
    kChanged,
    kInactive,
    kObsolete,
    kDefaults,
    kSeries,
    kRemarks,
    kColumns,  ///< the number of columns
  };

  /// The values that rows are sorted by: numbers, and states in the order of `FileStatus`.
  static constexpr int kSortRole = Qt::UserRole;

  /// @param language outlives the model
  OverviewModel(const Language& language, QObject* parent);

  /// Lists files, in this order. Those that were listed before keep their reports.
  void List(const std::vector<String>& files);

  /// Puts the report into the row of its file; without such a row, nothing happens.
  void Take(const FileReport& report);

  /// @return the row of a file; -1 when it is not listed.
  [[nodiscard]] int RowOf(StringView file) const;
  [[nodiscard]] const String& FileAt(int row) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

 private:
  struct Row {
    String file;
    std::optional<FileReport> report;
  };

  [[nodiscard]] QString TextOf(const FileReport& report, int column) const;
  [[nodiscard]] QVariant SortKeyOf(const FileReport& report, int column) const;
  /// @return the names behind a number, the whole of a text, or what a grey row means.
  [[nodiscard]] QStringList DetailsOf(const FileReport& report, int column) const;
  [[nodiscard]] QString StateOf(FileStatus status) const;
  [[nodiscard]] QStringList RemarksOf(const FileReport& report) const;
  [[nodiscard]] QString Text(Message key) const;

  const Language& language_;
  std::vector<Row> rows_;
};

}  // namespace quenmar
