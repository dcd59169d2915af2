#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "docmodel/Document.h"
#include "text/String.h"

namespace quenmar {

/// The settings of a grid's columns, as a tree that is made when the first one is set: a child
/// "CT_" and the column's index for each column that has settings, with the parameters "Tipo" and
/// "Etiqueta", the field "ReadOnly" and one field for each entry of the drop-down list.
///
/// The first field of a child is always "ReadOnly"; every later one is a list entry. They differ by
/// position, not by name, so an entry may be labelled "ReadOnly".
class ColumnSettings {
 public:
  /// @return "Tipo" as it was set, empty while it is not.
  [[nodiscard]] String Type(int col) const;
  void SetType(int col, StringView type);

  [[nodiscard]] bool ReadOnly(int col) const;
  void SetReadOnly(int col, bool readOnly);

  /// @return the column's label on export, empty while none is set.
  [[nodiscard]] String Etiqueta(int col) const;
  void SetEtiqueta(int col, StringView label);

  /// @return the labels of the list entries, in the order in which they were added.
  [[nodiscard]] std::vector<String> Labels(int col) const;

  /// @return the value of the first entry of exactly that label, empty when there is none.
  [[nodiscard]] String ValueOf(int col, StringView label) const;

  /// @return the label of the first entry of exactly that value.
  [[nodiscard]] std::optional<String> LabelOf(int col, StringView value) const;

  /// Appends an entry; a label that is there already is accepted. Throws `DocError` 32 or 33 for a
  /// label that cannot name a field, and adds nothing then.
  void AddEntry(int col, StringView label, StringView value);

  /// Removes the first entry of exactly that label, if there is one.
  void RemoveEntry(int col, StringView label);

  /// Forgets all settings of the column.
  void Remove(int col);

 private:
  using Child = std::shared_ptr<Document>;

  [[nodiscard]] Child Find(int col) const;  // null when the column has no settings
  [[nodiscard]] Child FindOrAdd(int col);
  [[nodiscard]] String ParameterOf(int col, StringView name) const;
  void SetParameter(int col, StringView name, StringView value);

  std::unique_ptr<Document> tree_;
};

}  // namespace quenmar
