#include "platform/address_book_win32.h"

#include <windows.h>

#include <optional>
#include <string>

#include "platform/environment_win32.h"
#include "platform/programs_win32.h"

namespace morvelle {

namespace {

/// The functions as Visual Basic declares them: 32-bit arguments, the callee clears the stack.
using OpenFunction = std::int32_t(__stdcall*)(std::int32_t* book);
using NumEntriesFunction = std::int32_t(__stdcall*)(std::int32_t* book);
using EntriesFunction = std::int32_t(__stdcall*)(std::int32_t* book, std::int32_t* ids,
                                                 std::int32_t count);
using StringFunction = std::int32_t(__stdcall*)(std::int32_t* book, std::int32_t entry,
                                                std::int32_t property, char* buffer,
                                                std::int32_t length, std::int32_t zero);

struct Functions {
  OpenFunction open = nullptr;
  NumEntriesFunction numEntries = nullptr;
  EntriesFunction entries = nullptr;
  StringFunction string = nullptr;
  EntriesFunction freeEntries = nullptr;
  OpenFunction close = nullptr;

  [[nodiscard]] bool AreThere() const {
    return open != nullptr && numEntries != nullptr && entries != nullptr && string != nullptr &&
           freeEntries != nullptr && close != nullptr;
  }
};

/// Finds a function by its plain name or, in a 32-bit library that was linked so, by the name that
/// carries the bytes of its arguments.
template <typename Function>
void Find(HMODULE library, const char* name, int argumentBytes, Function& function) {
  auto found = ::GetProcAddress(library, name);
  if (found == nullptr) {
    const auto decorated = "_" + std::string(name) + "@" + std::to_string(argumentBytes);
    found = ::GetProcAddress(library, decorated.c_str());
  }
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

class KWabAddressBook final : public AddressBook {
 public:
  KWabAddressBook() = default;
  KWabAddressBook(const KWabAddressBook&) = delete;
  KWabAddressBook& operator=(const KWabAddressBook&) = delete;
  ~KWabAddressBook() override {
    if (library_ != nullptr) ::FreeLibrary(library_);
  }

  bool Open(const std::filesystem::path& /*file*/, BookHandle& book) override {
    open_ = Load() && functions_.open(&book) != 0;
    return open_;
  }
  std::int32_t NumEntries(BookHandle& book) override {
    return open_ ? functions_.numEntries(&book) : 0;
  }
  void GetEntries(BookHandle& book, std::span<EntryId> ids) override {
    if (open_) functions_.entries(&book, ids.data(), static_cast<std::int32_t>(ids.size()));
  }
  bool GetString(BookHandle& book, EntryId entry, std::uint32_t property,
                 std::span<char> buffer) override {
    return open_ &&
           functions_.string(&book, entry, static_cast<std::int32_t>(property), buffer.data(),
                             static_cast<std::int32_t>(buffer.size()), 0) != 0;
  }
  void FreeEntries(BookHandle& book, std::span<EntryId> ids) override {
    if (open_) functions_.freeEntries(&book, ids.data(), static_cast<std::int32_t>(ids.size()));
  }
  void Close(BookHandle& book) override {
    if (open_) functions_.close(&book);
    open_ = false;
  }

 private:
  bool Load() {
    if (library_ == nullptr) {
      library_ =
          LoadLibraryAt(Win32Environment(std::nullopt).ProgramFile().parent_path() / "kWab.dll");
    }
    if (library_ == nullptr) return false;
    Find(library_, "kWabOpen", 4, functions_.open);
    Find(library_, "kWabGetNumEntries", 4, functions_.numEntries);
    Find(library_, "kWabGetEntries", 12, functions_.entries);
    Find(library_, "kWabGetProp_String", 24, functions_.string);
    Find(library_, "kWabFreeEntries", 12, functions_.freeEntries);
    Find(library_, "kWabClose", 4, functions_.close);
    return functions_.AreThere();
  }

  HMODULE library_ = nullptr;
  Functions functions_;
  bool open_ = false;
};

}  // namespace

std::unique_ptr<AddressBook> MakeWindowsAddressBook() {
  return std::make_unique<KWabAddressBook>();
}

}  // namespace morvelle
