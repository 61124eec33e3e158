#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

namespace morvelle {

/// A folder of the running test's own, empty at first, deleted with the object.
class TempFolder {
 public:
  TempFolder() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = "morvelle-";
    if (test != nullptr) name += std::string(test->test_suite_name()) + "-" + test->name();
    for (auto& character : name) {
      if (character == '/') character = '-';
    }
    // Two programs may run tests of one name at the same time, and one test may want two folders.
    int number = 0;
    do {
      path_ = std::filesystem::temp_directory_path() / (name + "-" + std::to_string(number++));
    } while (!std::filesystem::create_directory(path_));
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& below) const {
    return path_ / below;
  }

 private:
  std::filesystem::path path_;
};

/// Writes a file with exactly these bytes, making the folders above it.
inline void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::filesystem::filesystem_error("write", path, std::error_code());
}

/// The bytes of a file; empty, with a failure of the test, when it cannot be read.
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) ADD_FAILURE() << "cannot be read: " << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The contents of the dated copies in a folder.
inline std::multiset<std::string> DatedCopies(const std::filesystem::path& folder) {
  std::multiset<std::string> contents;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const auto name = entry.path().filename().string();
    if (name.find(" (copie du ") != name.npos) contents.insert(ReadFile(entry.path()));
  }
  return contents;
}

/// `text` with its one occurrence of `from` replaced.
inline std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const auto at = text.find(from);
  if (at == std::string::npos) {
    ADD_FAILURE() << "not found: " << from << "\nin:\n" << text;
    return text;
  }
  return text.replace(at, from.size(), to);
}

/// A folder whose files are reached by name.
class FileFolder : public TempFolder {
 public:
  std::filesystem::path Write(const std::string& name, std::string_view bytes) const {
    WriteFile(*this / name, bytes);
    return *this / name;
  }
  [[nodiscard]] std::string Read(const std::string& name) const { return ReadFile(*this / name); }
  [[nodiscard]] std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
};

}  // namespace morvelle
