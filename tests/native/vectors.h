// The files under tests/data, and expected.json among them: what the program must make of each.
#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/bytes.h"

namespace vectors {

using Json = nlohmann::json;

inline std::ifstream OpenData(const std::string& utf8Name) {
  const std::string path = std::string(MARLIT_TEST_DATA) + "/" + utf8Name;
  return std::ifstream(std::filesystem::path(std::u8string(path.begin(), path.end())), std::ios::binary);
}

inline Bytes FileBytes(const std::string& utf8Name) {
  std::ifstream file = OpenData(utf8Name);
  if (!file) throw std::runtime_error("no test data " + utf8Name);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

inline const Json& Expected(const std::string& key) {
  static const Json all = [] {
    std::ifstream file = OpenData("expected.json");
    return Json::parse(file);
  }();
  return all.at(key);
}

// JSON has no numbers for nan, inf and -inf: they are texts.
inline double Number(const Json& value) {
  return value.is_string() ? std::stod(value.get<std::string>()) : value.get<double>();
}

inline std::vector<double> Numbers(const Json& values) {
  std::vector<double> numbers;
  for (const Json& value : values) numbers.push_back(Number(value));
  return numbers;
}

inline std::wstring Wide(const std::string& utf8) {
  const std::u16string wide = std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).u16string();
  return std::wstring(wide.begin(), wide.end());
}

}  // namespace vectors
