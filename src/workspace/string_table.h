#pragma once
// A rectangular table of text cells addressed by (column, row), both counted from 0.
//
// Storage is column-wise and compact, because the data table must hold a million cases by
// a thousand variables: each cell is an 8-byte slot that holds a text of up to 8 bytes
// inline (up to 7 when the eighth byte is a control byte); a longer text lives in the column's character arena and the slot holds its
// offset. There is no heap string per cell. Writing cells in row order (as a load does)
// and reading one column are both cheap.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

class StringTable {
 public:
  StringTable() = default;
  StringTable(int colCount, int rowCount) { Resize(colCount, rowCount); }

  int ColCount() const { return static_cast<int>(columns_.size()); }
  int RowCount() const { return rows_; }
  // Growing adds empty cells, shrinking drops the last columns or rows. Growing a large
  // table by rows may share the columns out to a second thread (the kernel's zeroing of
  // the new pages is a good part of a load).
  void SetColCount(int n);
  void SetRowCount(int n, int threads = 1);
  void Resize(int colCount, int rowCount);

  // The view stays valid until the next write into the same column.
  // Reading outside the table gives an empty text.
  std::string_view GetCell(int c, int r) const;
  // Writing outside the table is ignored. The text is stored as given.
  void SetCell(int c, int r, std::string_view s);

  // Stores a text that fits a slot into a cell that holds no long text, touching nothing
  // but that cell's slot, so that a load may fill different rows from several threads.
  // False, and nothing stored, for any other text or cell.
  bool SetShortCell(int c, int r, std::string_view s);

  std::vector<std::string> Column(int c) const;
  std::vector<std::string> Row(int r) const;
  // Stores a whole column or row; missing entries become empty, surplus ones are ignored.
  void SetColumn(int c, const std::vector<std::string>& cells);
  void SetRow(int r, const std::vector<std::string>& cells);

  // Inserts empty columns before column c, or removes them; rows likewise. These move
  // whole columns at once, as inserting and deleting variables and cases do.
  void InsertColumns(int c, int count);
  void DeleteColumns(int c, int count);
  void InsertRows(int r, int count);
  void DeleteRows(int r, int count);

  // Reorders rows: row first + i receives what row order[i] held (order lists rows inside
  // first .. first + order.size() - 1, each once). Moves the cells' slots, not their texts,
  // so sorting a million cases costs one pass over each column.
  void PermuteRows(int first, const std::vector<int>& order);

  // Empties every cell, keeping the size.
  void ClearCells();

  // Bytes held for the cells (cells and arenas), for the capacity benchmark.
  std::size_t MemoryBytes() const;

 private:
  struct Slot {
    // A text of up to 7 bytes: bytes 0..6 hold it, byte 7 its length. A text of 8 bytes
    // whose last byte is no length and not kLong (any number's or word's, as UTF-8 never
    // holds 0xFF): all 8 bytes. With byte 7 == kLong, bytes 0..6 hold the little-endian
    // offset of a record in the arena: a 4-byte length, then text.
    unsigned char bytes[8];
  };
  static constexpr unsigned char kLong = 0xFF;
  static constexpr std::size_t kSlotBytes = 8;

  static bool FitsSlot(std::string_view s) {
    if (s.size() < kSlotBytes) return true;
    const auto last = static_cast<unsigned char>(s[kSlotBytes - 1]);
    return s.size() == kSlotBytes && last >= kSlotBytes && last != kLong;
  }
  static std::size_t InlineLength(const Slot& s) { return s.bytes[7] < kSlotBytes ? s.bytes[7] : kSlotBytes; }
  static Slot InlineSlot(std::string_view s) {
    Slot fresh{};
    for (std::size_t i = 0; i < s.size(); ++i) fresh.bytes[i] = static_cast<unsigned char>(s[i]);  // no call for a few bytes
    if (s.size() < kSlotBytes) fresh.bytes[7] = static_cast<unsigned char>(s.size());
    return fresh;
  }

  struct ColumnStore {
    std::vector<Slot> cells;
    std::string arena;
    std::size_t garbage = 0;  // arena bytes no slot refers to any more
  };

  static Slot EmptySlot() { return Slot{}; }
  static bool IsLong(const Slot& s) { return s.bytes[7] == kLong; }
  static std::uint64_t OffsetOf(const Slot& s);
  static std::uint32_t LongLength(const ColumnStore& col, const Slot& s);
  static std::string_view View(const ColumnStore& col, const Slot& s);
  static void Release(ColumnStore& col, const Slot& s);
  static void Store(ColumnStore& col, Slot& slot, std::string_view s);
  static void Compact(ColumnStore& col);

  std::vector<ColumnStore> columns_;
  int rows_ = 0;
};

// Inline because a load writes every cell through it: a short text over a short one is
// copied straight into its slot.
inline void StringTable::SetCell(int c, int r, std::string_view s) {
  if (c < 0 || r < 0 || c >= ColCount() || r >= rows_) return;
  ColumnStore& col = columns_[c];
  Slot& slot = col.cells[r];
  if (!IsLong(slot) && FitsSlot(s)) {
    slot = InlineSlot(s);
    return;
  }
  Store(col, slot, s);
}

inline bool StringTable::SetShortCell(int c, int r, std::string_view s) {
  if (c < 0 || r < 0 || c >= ColCount() || r >= rows_ || !FitsSlot(s)) return false;
  Slot& slot = columns_[c].cells[r];
  if (IsLong(slot)) return false;
  slot = InlineSlot(s);
  return true;
}

}  // namespace tarvika
