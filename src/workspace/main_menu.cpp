#include "workspace/main_menu.h"

#include <algorithm>
#include <array>

namespace tarvika {

const std::vector<MenuEntry>& MainMenu() {
  static const std::vector<MenuEntry> menu = {
      {"", "File", "Fájl",
       {
           {"file.new", "New", "Új"},
           {"file.open", "Open", "Megnyit"},
           {"file.save", "Save", "Ment"},
           {"file.save_as", "Save As", "Mentés másként"},
           {"file.export_spss", "Export to SPSS program", "Exportálás SPSS programba"},
           {"file.export_tab", "Export with Tab-delimited format", "Exportálás tabulátorral tagolt formában"},
           {"file.information", "Additional informations for the current file", "Kiegészítő információk az aktuális fájlhoz"},
           {"file.recent", "Last edited files", "Utoljára szerkesztett fájlok"},
           {"file.print", "Print", "Nyomtatás"},
           {"file.distribute", "Distribute", "Szétosztás"},
           {"file.collect", "Collect", "Begyűjtés"},
           {"file.exit", "Exit", "Kilépés"},
       }},
      {"", "View", "Nézet",
       {
           {"view.output", "Current output file", "Aktuális output fájl"},
           {"view.column_width", "Oszlopszélesség = fejléc", "Oszlopszélesség = fejléc"},
           {"view.error_list", "Hibalista", "Hibalista"},
       }},
      {"", "Edit", "Szerkesztés",
       {
           {"edit.undo", "Visszaállít / &Undo", "Visszaállít / &Undo"},
           {"edit.redo", "Újra megtesz / &Redo", "Újra megtesz / &Redo"},
           {"edit.cut", "Cut", "Kivág"},
           {"edit.copy", "Copy", "Másol"},
           {"edit.paste", "Paste", "Beilleszt"},
           {"edit.delete", "Delete", "Töröl"},
           {"edit.find_replace", "Find and replace   ", "Keresés és csere   "},
           {"edit.type_control_on", "Típusellenőrzés bekapcsolva", "Típusellenőrzés bekapcsolva"},
           {"edit.type_control_off", "Típusellenőrzés kikapcsolva", "Típusellenőrzés kikapcsolva"},
       }},
      {"", "Data", "Adatok",
       {
           {"data.insert_cases", "Insert cases", "Esetek beszúrása"},
           {"data.delete_cases", "Delete cases", "Esetek törlése"},
           {"data.go_to_case", "Go to case", "Ugrás esetre"},
           {"data.sort_cases", "Sort cases", "Esetek rendezése"},
           {"", "Merge files   ", "Fájlok összefűzése   ",
            {
                {"data.merge_cases", "Add cases", "Esetek hozzáadása"},
                {"data.merge_variables", "Add variables", "Változók hozzáadása"},
            }},
           {"data.split", "Split file", "Fájl szétvágása"},
           {"data.verification", "Data verification", "Adatellenőrzés"},
       }},
      {"", "Variables", "Változók",
       {
           {"variables.insert", "Insert variables", "Változók beszúrása"},
           {"variables.delete", "Delete variables", "Változók törlése"},
           {"variables.go_to", "Go to variable", "Ugrás változóra"},
           {"variables.default", "Properties of the default variable", "Az alapértelmezett változó tulajdonságai"},
       }},
      {"", "Transformations", "Transzformációk",
       {
           {"transform.univariate", "Univariate function", "Egyváltozós függvény"},
           {"transform.bivariate", "Bivariate function", "Kétváltozós függvény"},
           {"transform.weighted_sum", "Weighted sum", "Súlyozott összeg"},
           {"transform.bivariate_operation", "Bivariate operation", "Kétváltozós művelet"},
           {"transform.statistical", "Statistical function", "Statisztikai függvény"},
           {"transform.random", "New random variable", "Új véletlen változó"},
           {"transform.count", "Count                               ", "Számlálás                               "},
           {"transform.recode", "Recoding", "Átkódolás"},
       }},
      {"", "Statistical analyses", "Statisztikai elemzések",
       {
           {"analysis.single", "Basics (single sample analyses)", "Alapstatisztikák (egymintás elemzések)"},
           {"analysis.groups", "Comparing groups or variables", "Csoportok vagy változók összehasonlítása"},
           {"analysis.relations", "Relationship of variables", "Változók kapcsolata"},
           {"analysis.pattern", "Pattern-oriented analyses               ", "Mintázatorientált elemzések               "},
           {"analysis.r_multivariate", "Többváltozós elemzések R segítségével", "Többváltozós elemzések R segítségével"},
           {"analysis.r_routine", "Run \"R\" routine", "\"R\" rutin futtatása"},
       }},
      {"", "Settings", "Beállítások",
       {
           {"settings.font", "Font", "Betűméret"},
           {"settings.language_files", "Nyelvi fájlok editálása", "Nyelvi fájlok editálása"},
           {"settings.language", "Language", "Nyelv"},
           {"settings.cell_control", "Cell control", "Cellaellenőrzés"},
           {"settings.r_path", "R-path", "R elérési út"},
           {"settings.decimal_separator", "Decimal separator", "Tizedesjel"},
       }},
      {"", "Help", "Súgó",
       {
           {"help.edit", "Edit help files", "Súgófájlok szerkesztése"},
           {"help.manual", "Manual with HTML format", "Kézikönyv HTML formában"},
           {"help.statistics", "Working with statistical commands", "Munka a statisztikai parancsokkal"},
           {"help.how_to", "How to...", "Hogyan..."},
           {"help.about", "About", "Névjegy"},
       }},
  };
  return menu;
}

bool CommandIsBuilt(std::string_view command) {
  static constexpr std::array<std::string_view, 12> built = {
      "file.new",  "file.open", "file.save",         "file.save_as",          "file.exit",       "file.recent",
      "edit.type_control_on", "edit.type_control_off", "variables.default", "settings.font", "settings.language",
      "analysis.single",
  };
  return std::find(built.begin(), built.end(), command) != built.end();
}

}  // namespace tarvika
