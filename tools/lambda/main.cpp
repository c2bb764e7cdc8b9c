// make_lambda FOLDER: writes "lambda.txt" into FOLDER.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "lambda/lambda_system.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_lambda FOLDER\n";
    return 2;
  }
  try {
    const std::string text = tarvika::lambda::LambdaTableText();
    std::ofstream out(std::filesystem::path(argv[1]) / "lambda.txt", std::ios::binary | std::ios::trunc);
    out << text;
    if (!out) throw std::runtime_error("cannot write lambda.txt");
  } catch (const std::exception& e) {
    std::cerr << "make_lambda: " << e.what() << '\n';
    return 1;
  }
  return 0;
}
