// catalogue_reference CATALOGUE.json DOCS VERSION: writes DOCS/operations/*.md and DOCS/openapi.json.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "catalogue/reference/openapi.h"
#include "catalogue/reference/pages.h"

namespace {

using vek::bridge::Json;
namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  stream.exceptions(std::ios::badbit | std::ios::failbit);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream stream(path, std::ios::binary);
  stream.exceptions(std::ios::badbit | std::ios::failbit);
  stream << text;
}

std::set<std::string> PicturesIn(const fs::path& folder) {
  std::set<std::string> names;
  if (!fs::exists(folder)) return names;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().extension() == ".png") names.insert(entry.path().stem().string());
  return names;
}

void Write(const fs::path& catalogue_file, const fs::path& docs, const std::string& version) {
  const Json catalogue = Json::parse(ReadFile(catalogue_file));
  const fs::path folder = docs / "operations";
  fs::create_directories(folder);
  for (const auto& [file, text] : vek::reference::WritePages(catalogue, PicturesIn(folder / "images")))
    WriteFile(folder / file, text);
  WriteFile(docs / "openapi.json", vek::reference::WriteOpenApi(catalogue, version).dump(1) + "\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: catalogue_reference CATALOGUE.json DOCS VERSION\n";
    return 2;
  }
  try {
    Write(argv[1], argv[2], argv[3]);
  } catch (const std::exception& failure) {
    std::cerr << "The reference could not be written: " << failure.what() << "\n";
    return 1;
  }
  return 0;
}
