#include "ui/table_models.h"

#include "ui/qt_text.h"
#include "workspace/declaration_editors.h"
#include "workspace/declarations.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// A cell holds no tab or line end: they separate fields and records in the project file.
std::string CellText(const QVariant& value) {
  std::string text = value.toString().toStdString();
  for (char& c : text) {
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  }
  return text;
}

}  // namespace

int DataMatrixModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ws_.NumberOfCases();
}

int DataMatrixModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ws_.NumberOfVariables();
}

QVariant DataMatrixModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  return ToQt(ws_.data.GetCell(index.column() + 1, index.row() + 1));
}

QVariant DataMatrixModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) return ToQt(ws_.data.GetCell(section + 1, 0));
  return ToQt(ws_.data.GetCell(0, section + 1));
}

Qt::ItemFlags DataMatrixModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

bool DataMatrixModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  int c = index.column() + 1, r = index.row() + 1;
  std::string text = CellText(value);
  if (ws_.data.GetCell(c, r) == text) return false;
  ws_.data.SetCell(c, r, text);
  ws_.dataChanged = true;
  CheckCell(ws_, c, r);  // cleans a numeric cell and tells a fault when the type control is on
  emit dataChanged(index, index);
  return true;
}

void DataMatrixModel::Reload() {
  beginResetModel();
  endResetModel();
}

int VariableTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ws_.vars.RowCount() - 1;
}

int VariableTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kVisibleColumns; }

QVariant VariableTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  return ToQt(ws_.vars.GetCell(index.column(), index.row() + 1));
}

QVariant VariableTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  static const char* english[] = {"", "Short name", "Long name", "Type", "Group labels", "Group type", "Missing"};
  static const char* hungarian[] = {"", "Rövid név", "Hosszú név", "Típus", "Csoportnevek", "Csop. típus", "Hiányzó"};
  return QString::fromUtf8((ws_.language == Language::English ? english : hungarian)[section]);
}

Qt::ItemFlags VariableTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags f = QAbstractTableModel::flags(index);
  if (index.column() != kIndex) f |= Qt::ItemIsEditable;
  return f;
}

bool VariableTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  int row = index.row() + 1;
  std::string text = CellText(value);
  if (index.column() == kGroupType) {
    // The drop-down list offers the words; anything else typed in is refused.
    if (GroupKindOf(text) == GroupKind::Unknown) {
      RefuseTypedGroupType(ws_);
      return false;
    }
    if (!ChangeGroupType(ws_, row, text)) return false;
  } else {
    if (!CheckDeclarationText(ws_, index.column(), text)) return false;
    ws_.vars.SetCell(index.column(), row, text);
    ws_.dataChanged = true;
  }
  if (index.column() == kShortName || index.column() == kType || index.column() == kGroupLabels ||
      index.column() == kMissing) {
    ValidateDeclarations(ws_);
    emit NamesChanged();
  }
  emit dataChanged(this->index(index.row(), 0), this->index(index.row(), kVisibleColumns - 1));
  return true;
}

void VariableTableModel::Reload() {
  beginResetModel();
  endResetModel();
}

}  // namespace tarvika
