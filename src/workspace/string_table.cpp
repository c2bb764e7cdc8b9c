#include "workspace/string_table.h"

#include <algorithm>
#include <cstring>

#include "lang/two_threads.h"

namespace tarvika {

std::uint64_t StringTable::OffsetOf(const Slot& s) {
  std::uint64_t off = 0;
  for (int i = 6; i >= 0; --i) off = (off << 8) | s.bytes[i];
  return off;
}

std::uint32_t StringTable::LongLength(const ColumnStore& col, const Slot& s) {
  std::uint32_t len;
  std::memcpy(&len, col.arena.data() + OffsetOf(s), sizeof len);
  return len;
}

std::string_view StringTable::View(const ColumnStore& col, const Slot& s) {
  if (!IsLong(s)) return std::string_view(reinterpret_cast<const char*>(s.bytes), InlineLength(s));
  return std::string_view(col.arena.data() + OffsetOf(s) + sizeof(std::uint32_t), LongLength(col, s));
}

void StringTable::Release(ColumnStore& col, const Slot& s) {
  if (IsLong(s)) col.garbage += sizeof(std::uint32_t) + LongLength(col, s);
}

void StringTable::Store(ColumnStore& col, Slot& slot, std::string_view s) {
  if (FitsSlot(s)) {
    Release(col, slot);
    slot = InlineSlot(s);
    return;
  }
  auto len = static_cast<std::uint32_t>(s.size());
  if (IsLong(slot) && LongLength(col, slot) >= len) {
    // Overwrite in place; the tail of the old text becomes garbage. The text may be a part
    // of the cell's own old text, so the bytes are moved, not copied.
    std::uint64_t off = OffsetOf(slot);
    col.garbage += LongLength(col, slot) - len;
    std::memmove(col.arena.data() + off + sizeof len, s.data(), s.size());
    std::memcpy(col.arena.data() + off, &len, sizeof len);
    return;
  }
  // A text read from this very column (a paste or a sort moving cells within it) lives in
  // the arena that the append below may reallocate: copy it out first.
  std::string own;
  if (!col.arena.empty() && s.data() >= col.arena.data() && s.data() < col.arena.data() + col.arena.size()) {
    own.assign(s);
    s = own;
  }
  Release(col, slot);
  std::uint64_t off = col.arena.size();
  col.arena.append(reinterpret_cast<const char*>(&len), sizeof len);
  col.arena.append(s);
  for (int i = 0; i < 7; ++i) slot.bytes[i] = static_cast<unsigned char>(off >> (8 * i));
  slot.bytes[7] = kLong;
  if (col.garbage > 4096 && col.garbage * 2 > col.arena.size()) Compact(col);
}

void StringTable::Compact(ColumnStore& col) {
  std::string arena;
  arena.reserve(col.arena.size() - col.garbage);
  for (Slot& slot : col.cells) {
    if (!IsLong(slot)) continue;
    std::string_view text = View(col, slot);
    auto len = static_cast<std::uint32_t>(text.size());
    std::uint64_t off = arena.size();
    arena.append(reinterpret_cast<const char*>(&len), sizeof len);
    arena.append(text);
    for (int i = 0; i < 7; ++i) slot.bytes[i] = static_cast<unsigned char>(off >> (8 * i));
  }
  col.arena = std::move(arena);
  col.garbage = 0;
}

void StringTable::SetColCount(int n) {
  n = std::max(n, 0);
  std::size_t old = columns_.size();
  columns_.resize(n);
  for (std::size_t c = old; c < columns_.size(); ++c) columns_[c].cells.assign(rows_, EmptySlot());
}

void StringTable::SetRowCount(int n, int threads) {
  n = std::max(n, 0);
  if (n == rows_) return;
  auto resize = [this, n](std::size_t from, std::size_t step) {
    for (std::size_t c = from; c < columns_.size(); c += step) {
      ColumnStore& col = columns_[c];
      if (n < rows_) {
        for (int r = n; r < rows_; ++r) Release(col, col.cells[r]);
        col.cells.resize(n);
        if (col.garbage > 0 && col.garbage * 2 > col.arena.size()) Compact(col);
      } else {
        col.cells.resize(n, EmptySlot());
      }
    }
  };
  constexpr long long kWorthAThread = 1 << 22;  // new slots
  const bool split = threads > 1 && static_cast<long long>(n - rows_) * ColCount() >= kWorthAThread;
  RunOnTwoThreads(split, [&] { resize(1, 2); }, [&] { resize(0, 2); });  // odd and even columns
  rows_ = n;
}

void StringTable::Resize(int colCount, int rowCount) {
  SetRowCount(rowCount);
  SetColCount(colCount);
}

std::string_view StringTable::GetCell(int c, int r) const {
  if (c < 0 || r < 0 || c >= ColCount() || r >= rows_) return {};
  const ColumnStore& col = columns_[c];
  return View(col, col.cells[r]);
}

std::vector<std::string> StringTable::Column(int c) const {
  std::vector<std::string> out;
  out.reserve(rows_);
  for (int r = 0; r < rows_; ++r) out.emplace_back(GetCell(c, r));
  return out;
}

std::vector<std::string> StringTable::Row(int r) const {
  std::vector<std::string> out;
  out.reserve(columns_.size());
  for (int c = 0; c < ColCount(); ++c) out.emplace_back(GetCell(c, r));
  return out;
}

void StringTable::SetColumn(int c, const std::vector<std::string>& cells) {
  for (int r = 0; r < rows_; ++r) SetCell(c, r, r < static_cast<int>(cells.size()) ? cells[r] : std::string());
}

void StringTable::SetRow(int r, const std::vector<std::string>& cells) {
  for (int c = 0; c < ColCount(); ++c) SetCell(c, r, c < static_cast<int>(cells.size()) ? cells[c] : std::string());
}

void StringTable::InsertColumns(int c, int count) {
  if (count <= 0) return;
  c = std::clamp(c, 0, ColCount());
  std::vector<ColumnStore> fresh(count);
  for (ColumnStore& col : fresh) col.cells.assign(rows_, EmptySlot());
  columns_.insert(columns_.begin() + c, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
}

void StringTable::DeleteColumns(int c, int count) {
  if (c < 0 || c >= ColCount() || count <= 0) return;
  count = std::min(count, ColCount() - c);
  columns_.erase(columns_.begin() + c, columns_.begin() + c + count);
}

void StringTable::InsertRows(int r, int count) {
  if (count <= 0) return;
  r = std::clamp(r, 0, rows_);
  for (ColumnStore& col : columns_) col.cells.insert(col.cells.begin() + r, count, EmptySlot());
  rows_ += count;
}

void StringTable::DeleteRows(int r, int count) {
  if (r < 0 || r >= rows_ || count <= 0) return;
  count = std::min(count, rows_ - r);
  for (ColumnStore& col : columns_) {
    for (int k = r; k < r + count; ++k) Release(col, col.cells[k]);
    col.cells.erase(col.cells.begin() + r, col.cells.begin() + r + count);
    if (col.garbage > 0 && col.garbage * 2 > col.arena.size()) Compact(col);
  }
  rows_ -= count;
}

void StringTable::PermuteRows(int first, const std::vector<int>& order) {
  std::vector<Slot> moved(order.size());
  for (ColumnStore& col : columns_) {
    for (std::size_t i = 0; i < order.size(); ++i) moved[i] = col.cells[order[i]];
    std::copy(moved.begin(), moved.end(), col.cells.begin() + first);
  }
}

void StringTable::ClearCells() {
  for (ColumnStore& col : columns_) {
    std::fill(col.cells.begin(), col.cells.end(), EmptySlot());
    col.arena.clear();
    col.arena.shrink_to_fit();
    col.garbage = 0;
  }
}

std::size_t StringTable::MemoryBytes() const {
  std::size_t bytes = columns_.capacity() * sizeof(ColumnStore);
  for (const ColumnStore& col : columns_) bytes += col.cells.capacity() * sizeof(Slot) + col.arena.capacity();
  return bytes;
}

}  // namespace tarvika
