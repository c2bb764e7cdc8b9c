#include "workspace/main_menu.h"

#include <algorithm>
#include <array>

namespace tarvika {

const std::vector<MenuEntry>& MainMenu() {
  static const std::vector<MenuEntry> menu = {
      {"", 1,
       {
           {"file.new", 2},
           {"file.open", 3},
           {"file.save", 4},
           {"file.save_as", 5},
           {"file.export_spss", 6},
           {"file.export_tab", 7},
           {"file.information", 8},
           {"file.recent", 9},
           {"file.print", 10},
           {"file.distribute", 11},
           {"file.collect", 12},
           {"file.exit", 13},
       }},
      {"", 14,
       {
           {"view.output", 15},
           {"view.column_width", 16},
           {"view.error_list", 17},
       }},
      {"", 18,
       {
           {"edit.undo", 19},
           {"edit.redo", 20},
           {"edit.cut", 21},
           {"edit.copy", 22},
           {"edit.paste", 23},
           {"edit.delete", 24},
           {"edit.find_replace", 25},
           {"edit.type_control_on", 26},
           {"edit.type_control_off", 27},
       }},
      {"", 28,
       {
           {"data.insert_cases", 29},
           {"data.delete_cases", 30},
           {"data.go_to_case", 31},
           {"data.sort_cases", 32},
           {"", 33,
            {
                {"data.merge_cases", 34},
                {"data.merge_variables", 35},
            }},
           {"data.split", 36},
           {"data.verification", 37},
       }},
      {"", 38,
       {
           {"variables.insert", 39},
           {"variables.delete", 40},
           {"variables.go_to", 41},
           {"variables.default", 42},
       }},
      {"", 43,
       {
           {"transform.univariate", 44},
           {"transform.bivariate", 45},
           {"transform.weighted_sum", 46},
           {"transform.bivariate_operation", 47},
           {"transform.statistical", 48},
           {"transform.random", 49},
           {"transform.count", 50},
           {"transform.recode", 51},
       }},
      {"", 52,
       {
           {"analysis.single", 53},
           {"analysis.groups", 54},
           {"analysis.relations", 55},
           {"analysis.pattern", 56},
           {"analysis.r_multivariate", 57},
           {"analysis.r_routine", 58},
       }},
      {"", 59,
       {
           {"settings.font", 60},
           {"settings.language_files", 61},
           {"settings.language", 62},
           {"settings.cell_control", 63},
           {"settings.r_path", 64},
           {"settings.decimal_separator", 65},
       }},
      {"", 66,
       {
           {"help.edit", 67},
           {"help.manual", 68},
           {"help.statistics", 69},
           {"help.how_to", 70},
           {"help.about", 71},
       }},
  };
  return menu;
}

bool CommandIsBuilt(std::string_view command) {
  static constexpr std::array<std::string_view, 40> built = {
      "file.new", "file.open", "file.save", "file.save_as", "file.exit", "file.recent", "file.export_spss",
      "file.export_tab", "edit.type_control_on", "edit.type_control_off", "edit.undo", "edit.redo", "edit.cut",
      "edit.copy", "edit.paste", "edit.delete", "edit.find_replace", "data.insert_cases", "data.delete_cases",
      "data.go_to_case", "data.sort_cases", "variables.insert", "variables.delete", "variables.go_to",
      "variables.default", "transform.univariate", "transform.bivariate", "transform.statistical",
      "transform.recode", "transform.count", "settings.font", "settings.language", "settings.decimal_separator",
      "view.output", "data.merge_cases", "data.merge_variables", "data.split", "data.verification",
      "view.error_list", "settings.cell_control",
  };
  return std::find(built.begin(), built.end(), command) != built.end();
}

}  // namespace tarvika
