#include "exchange/import.h"

#include <filesystem>

#include "exchange/import_table.h"
#include "exchange/spss_import.h"
#include "exchange/spreadsheet_import.h"
#include "exchange/text_import.h"
#include "lang/utf8.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

std::string LowerExtension(const std::string& path) {
  return FoldCase(std::filesystem::path(path).extension().string());
}

// Without a header row the variables are "var1", "var2", ...
void NameByNumber(ImportTable& table) {
  for (int c = 0; c < table.Columns(); ++c) table.Variable(c).name = "var" + std::to_string(c + 1);
}

void ImportText(Workspace& ws, const std::string& path, const ImportOptions& options, ImportTable& table) {
  const Utf8Text file(ws, path);
  const std::string_view text = file.view();
  char delimiter = LowerExtension(path) == ".csv" ? ',' : '\t';
  if (options.delimiter) {
    delimiter = *options.delimiter;
  } else if (auto preset = PresetDelimiter(text)) {
    delimiter = *preset;
  }
  const int cases = ReadDelimited(ws, text, delimiter, options.headerRow, table);
  if (!options.headerRow) NameByNumber(table);
  table.Install(ws, cases);
}

void ImportSheet(Workspace& ws, const std::string& path, const ImportOptions& options, bool legacy, ImportTable& table) {
  std::vector<SheetCell> cells =
      legacy ? ReadXlsSheet(ws, path, options.sheet) : ReadXlsxSheet(ws, path, options.sheet);
  const int cases = FillFromSheet(ws, cells, options.headerRow, table);
  if (!options.headerRow) NameByNumber(table);
  table.Install(ws, cases);
}

void ImportSpss(Workspace& ws, const std::string& path, bool portable, ImportTable& table) {
  const SpssReadNotes notes = portable ? ReadPorFile(ws, path, table) : ReadSavFile(ws, path, table);
  table.Install(ws, notes.cases);
  if (portable) ws.user.Tell(ws.Text("The SPSS portable file has been successfully loaded.", "Az SPSS portable fájl betöltése sikerült."));
  if (const std::string warning = SpssReadWarning(ws, notes); !warning.empty()) ws.user.Tell(warning);
}

}  // namespace

bool IsImportable(const std::string& path) {
  const std::string ext = LowerExtension(path);
  for (const char* known : {".csv", ".txt", ".tsv", ".xlsx", ".xls", ".sav", ".por"}) {
    if (ext == known) return true;
  }
  return false;
}

bool ImportFile(Workspace& ws, const std::string& path, const ImportOptions& options) {
  const std::string ext = LowerExtension(path);
  ImportTable table(ws.decimalSeparator);
  // Readers throw before ImportTable::Install touches the workspace, so a failure leaves it as it was.
  ws.busy = true;
  try {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
      throw ImportError{std::string(ws.Text("File specified to load does not exist.", "A megadott fájl nem létezik, ezért nem lehet betölteni.")) +
                        " (" + path + ")"};
    }
    if (ext == ".csv" || ext == ".txt" || ext == ".tsv") {
      ImportText(ws, path, options, table);
    } else if (ext == ".xlsx" || ext == ".xls") {
      ImportSheet(ws, path, options, ext == ".xls", table);
    } else if (ext == ".sav" || ext == ".por") {
      ImportSpss(ws, path, ext == ".por", table);
    } else {
      throw ImportError{std::string(ws.Text("This kind of file can't be imported: ", "Ez a fájlfajta nem importálható: ")) + path};
    }
  } catch (const ImportError& e) {
    ws.busy = false;
    ws.ShowProgress("");
    ws.user.Tell(std::string(ws.Text("Unsuccessful data input.", "Sikertelen adatfájl input.")) + "\r\n" + e.message);
    return false;
  }
  ws.busy = false;
  ws.ShowProgress("");
  ws.SetCurrentFile("");
  ws.suggestedOutputFile = SuggestedOutputFile(WithExtension(path, ".msw"));
  ws.knownFile.clear();
  ws.knownFileIdentity.reset();
  return true;
}

}  // namespace tarvika
