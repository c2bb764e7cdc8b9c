#include "ui/table_models.h"

#include <QBrush>
#include <QColor>

#include "frame/data_feed.h"
#include "ui/declaration_dialogs.h"
#include "ui/qt_text.h"
#include "workspace/declaration_editors.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
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
  if (!index.isValid()) return {};
  const int v = index.column() + 1;
  std::string_view text = ws_.data.GetCell(v, index.row() + 1);
  switch (role) {
    case Qt::EditRole:
      return ToQt(text);
    case Qt::DisplayRole: {
      if (showLabels_ && v < static_cast<int>(labels_.size()) && labels_[v] && !text.empty()) {
        if (auto x = ParsePlainDecimal(text, ws_.decimalSeparator)) {
          for (const LabelEntry& e : *labels_[v]) {
            if (*x >= e.lo && *x <= e.hi) return ToQt(e.label);
          }
        }
      }
      return ToQt(text);
    }
    case Qt::TextAlignmentRole: {
      bool number = !text.empty() && ParsePlainDecimal(text, ws_.decimalSeparator).has_value();
      return QVariant::fromValue(Qt::Alignment((number && !showLabels_ ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
    }
    case Qt::BackgroundRole:
    case Qt::ToolTipRole: {
      // A declared missing code is marked: shaded, and its tool tip says so.
      if (text.empty() || v >= static_cast<int>(missing_.size()) || missing_[v].count == 0) return {};
      auto x = ParsePlainDecimal(text, ws_.decimalSeparator);
      if (!x || !IsMissingByCodes(missing_[v], *x)) return {};
      if (role == Qt::BackgroundRole) return QBrush(QColor(255, 224, 178));
      return ToQt(ws_.Text("Declared missing code", "Deklarált hiányzó kód"));
    }
    default:
      return {};
  }
}

void DataMatrixModel::ShowLabels(bool on) {
  showLabels_ = on;
  if (rowCount() > 0 && columnCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
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
  const QString before = ToQt(ws_.data.GetCell(c, r));
  ws_.data.SetCell(c, r, text);
  ws_.dataChanged = true;
  // With the type control on: a numeric cell is cleaned, a fault told or offered its choices.
  CellFault fault = FindCellFault(ws_, c, r);
  if (fault == CellFault::NonNumeric) TellCellFault(ws_, c, fault);
  emit dataChanged(index, index);
  emit CellEdited(c, r, before, ToQt(ws_.data.GetCell(c, r)));
  if (fault == CellFault::OutOfRange) emit EnteredOutOfRange(c, r);
  return true;
}

void DataMatrixModel::Reload() {
  beginResetModel();
  const int n = ws_.NumberOfVariables();
  labels_.assign(n + 1, std::nullopt);
  missing_.assign(n + 1, MissingCodes{});
  for (int v = 1; v <= n; ++v) {
    labels_[v] = ParseLabels(ws_, v);
    if (labels_[v] && labels_[v]->empty()) labels_[v].reset();
    missing_[v] = ParseMissingText(ws_.vars.GetCell(kMissing, v), ws_.decimalSeparator).codes;
  }
  endResetModel();
}

int VariableTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ws_.vars.RowCount() - 1;
}

int VariableTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kVisibleColumns; }

QVariant VariableTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)) return {};
  const int row = index.row() + 1;
  std::string_view cell = ws_.vars.GetCell(index.column(), row);
  if (role == Qt::EditRole) return ToQt(cell);
  // The declarations in words; the cell itself is the tool tip and what the editors start from.
  QString words;
  switch (index.column()) {
    case kType: words = TypeInWords(ws_, cell); break;
    case kGroupLabels: words = LabelsInWords(ws_, row); break;
    case kMissing: words = MissingInWords(ws_, cell); break;
    case kGroupType: {
      GroupKind kind = GroupKindOf(cell);
      words = kind == GroupKind::Unknown ? ToQt(cell) : ToQt(GroupTypeWord(kind, ws_.language));
      break;
    }
    default: words = ToQt(cell);
  }
  if (role == Qt::ToolTipRole) return words == ToQt(cell) ? QVariant() : QVariant(ToQt(cell));
  return words;
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
  // The type, the labels and the missing codes have their dialogs (opened by Enter or a double click).
  const int c = index.column();
  if (c != kIndex && c != kType && c != kGroupLabels && c != kMissing) f |= Qt::ItemIsEditable;
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
      index.column() == kGroupType || index.column() == kMissing) {
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
