#pragma once
// Qt views of the two tables: models that read the core's cells on demand, no copy.

#include <QAbstractTableModel>

#include <optional>
#include <vector>

#include "workspace/declarations.h"

namespace tarvika {

class Workspace;

// Cases by variables: row r of the view is case r + 1, column c is variable c + 1; the
// header shows the short names and the case numbers.
class DataMatrixModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit DataMatrixModel(Workspace& ws, QObject* parent = nullptr) : QAbstractTableModel(parent), ws_(ws) {}
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  // The tables were replaced (load, new) or their declarations changed: the view starts again.
  void Reload();
  // Value labels instead of codes (the toggle of the View menu); editing shows the code.
  void ShowLabels(bool on);
  bool LabelsShown() const { return showLabels_; }

 signals:
  // A cell was written from the grid: its text before and after, for undo.
  void CellEdited(int col, int row, const QString& before, const QString& after);
  // With the type control on, a number outside its variable's declared range was written:
  // the window offers its choices (a nonnumeric text is told at once).
  void EnteredOutOfRange(int col, int row);

 private:
  // The declarations the grid reads per painted cell, parsed once per reload.
  std::vector<std::optional<std::vector<LabelEntry>>> labels_;  // by variable, 1-based
  std::vector<MissingCodes> missing_;
  bool showLabels_ = false;
  Workspace& ws_;
};

// One row per variable, the visible declaration columns (number, names, type, labels,
// group type, missing).
class VariableTableModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit VariableTableModel(Workspace& ws, QObject* parent = nullptr) : QAbstractTableModel(parent), ws_(ws) {}
  static constexpr int kVisibleColumns = 7;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  void Reload();

 signals:
  // Short names changed: the data view's header must follow.
  void NamesChanged();

 private:
  Workspace& ws_;
};

}  // namespace tarvika
