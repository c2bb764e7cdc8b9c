// make_stattab FOLDER: writes the statistical table files into FOLDER.

#include <exception>
#include <filesystem>
#include <iostream>

#include "stattab/table_writer.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_stattab FOLDER\n";
    return 2;
  }
  try {
    std::filesystem::create_directories(argv[1]);
    tarvika::stattab::WriteStatTables(argv[1]);
  } catch (const std::exception& e) {
    std::cerr << "make_stattab: " << e.what() << '\n';
    return 1;
  }
  return 0;
}
