#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "samples/sample_identity.h"

namespace {

/// Paths of the sample are UTF-8, whatever the system's code page.
std::filesystem::path Below(const std::filesystem::path& folder, const std::string& utf8) {
  return folder / std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

void Write(const std::filesystem::path& path, const std::string& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
}

bool IsThere(const std::filesystem::path& path, const std::string& bytes) {
  std::ifstream file(path, std::ios::binary);
  return file && std::string(std::istreambuf_iterator<char>(file), {}) == bytes;
}

}  // namespace

/// make_sample DOSSIER            writes the sample identity into the folder
/// make_sample --check DOSSIER    status 1 when the folder's files are not what would be written
int main(int count, char** arguments) {
  const bool check = count == 3 && std::string_view(arguments[1]) == "--check";
  if (count != 2 && !check) {
    std::cerr << "make_sample [--check] DOSSIER\n";
    return 2;
  }
  try {
    int status = 0;
    for (const auto& [name, bytes] : morvelle::SampleIdentityFiles()) {
      const auto path = Below(arguments[count - 1], name);
      if (!check) {
        Write(path, bytes);
      } else if (!IsThere(path, bytes)) {
        std::cerr << "not as generated: " << name << '\n';
        status = 1;
      }
    }
    return status;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
