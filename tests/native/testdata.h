// The files under tests/data, and texts and numbers as they stand in JSON.
#pragma once

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/utf16.h"

namespace testdata {

using Json = nlohmann::json;

inline std::filesystem::path Path(const std::string& utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

inline Bytes BytesAt(const std::string& utf8Path) {
  std::ifstream file(Path(utf8Path), std::ios::binary);
  if (!file) throw std::runtime_error("no test data " + utf8Path);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}
inline Bytes FileBytes(const std::string& utf8Name) {
  return BytesAt(MARLIT_TEST_DATA "/" + utf8Name);
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
  return WideOf(Path(utf8).u16string());
}

inline std::string Utf8(const std::wstring& text) {
  const std::u8string utf8 = std::filesystem::path(Utf16Of(text)).u8string();
  return std::string(utf8.begin(), utf8.end());
}

}  // namespace testdata
