#include "core/registry_access.h"

#include <cstring>
#include <limits>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr RegistryStatus kStatusMoreData = 234;

std::int32_t NumberOfBytes(const std::string& data) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < data.size(); ++i) {
    number |= std::uint32_t{static_cast<unsigned char>(data[i])} << (8 * i);
  }
  return static_cast<std::int32_t>(number);
}

std::string BytesOfNumber(std::int32_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  std::string data;
  for (unsigned shift = 0; shift < 32; shift += 8) data += static_cast<char>(bits >> shift);
  return data;
}

std::int32_t NumberOf(const RegistryValue& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return ToLong(*text);
  return 0;
}

}  // namespace

std::string TextOf(const RegistryValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
  return {};
}

void RegistryAccess::CreateKey(const std::string& path) {
  Trap(messages_.Boxes(), "CreateKey", [&] {
    KeyHandle handle = 0;
    // The handle is dropped, neither closed nor given: callers open the key again.
    if (store_.CreateKey(path, handle) == kStatusSuccess) return;
    messages_.Boxes().ShowMessage(std::string("Impossible de créer la clef"_cp), kBoxOk,
                                  "CreateKey");
    throw ProgramEnd{};
  });
}

RegistryStatus RegistryAccess::OpenKey(const std::string& path, KeyHandle& handle,
                                       bool createIfMissing) {
  return Trap(messages_.Boxes(), "OpenKey", [&] {
    auto status = store_.OpenKey(path, KeyAccess::ReadWrite, handle);
    if (status != kStatusSuccess && createIfMissing) {
      CreateKey(path);
      status = store_.OpenKey(path, KeyAccess::ReadWrite, handle);
    }
    return status;
  });
}

RegistryStatus RegistryAccess::ReadTyped(KeyHandle key, std::string_view name, ValueKind kind,
                                         RegistryValue& value) const {
  if (kind != ValueKind::String && kind != ValueKind::ExpandString && kind != ValueKind::Binary &&
      kind != ValueKind::Dword) {
    return kStatusSuccess;
  }
  std::string data;
  const auto status = store_.ReadValue(key, name, data);
  if (kind == ValueKind::Dword) {
    if (status == kStatusSuccess && data.size() > sizeof(std::int32_t)) return kStatusMoreData;
    if (status == kStatusSuccess) value = NumberOfBytes(data);
    return status;
  }
  if (status != kStatusSuccess) {
    value = std::string{};
    return status;
  }
  // A string stored without its final zero keeps its last character.
  if (kind != ValueKind::Binary && !data.empty() && data.back() == '\0') data.pop_back();
  value = std::move(data);
  return status;
}

RegistryStatus RegistryAccess::QueryValue(std::string_view table, KeyHandle key,
                                          std::string_view name, RegistryValue& value) {
  return Trap(messages_.Boxes(), "QueryValue", [&] {
    ValueKind kind{};
    std::uint32_t size = 0;
    const auto status = store_.DescribeValue(key, name, kind, size);
    if (status == kStatusNotFound) {
      damage_.BadValueReport(table);
      return status;
    }
    if (status != kStatusSuccess) {
      damage_.UnreadableValue(ErrorDescription(status), name);
      return status;
    }
    return ReadTyped(key, name, kind, value);
  });
}

RegistryStatus RegistryAccess::QueryField(std::string_view table, KeyHandle key,
                                          std::string_view name, std::string& field) {
  RegistryValue value;
  const auto status = QueryValue(table, key, name, value);
  if (auto* text = std::get_if<std::string>(&value)) {
    field = std::move(*text);
  } else {
    field = TextOf(value);
  }
  return status;
}

RegistryValue RegistryAccess::Peek(KeyHandle key, std::string_view name) const {
  ValueKind kind{};
  std::uint32_t size = 0;
  RegistryValue value;
  if (store_.DescribeValue(key, name, kind, size) != kStatusSuccess ||
      ReadTyped(key, name, kind, value) != kStatusSuccess) {
    return {};
  }
  return value;
}

RegistryStatus RegistryAccess::SetKeyValue(KeyHandle key, std::string_view name, ValueKind kind,
                                           const RegistryValue& value) {
  return Trap(messages_.Boxes(), "SetKeyValue", [&] {
    switch (kind) {
      case ValueKind::String:
      case ValueKind::ExpandString:
        return store_.SetValue(key, name, kind, TextOf(value) + '\0');
      case ValueKind::Binary:
        return store_.SetValue(key, name, kind, TextOf(value));
      case ValueKind::Dword:
        return store_.SetValue(key, name, kind, BytesOfNumber(NumberOf(value)));
      default:
        return kStatusSuccess;
    }
  });
}

RegistryStatus RegistryAccess::DeleteKey(const std::string& path) {
  return Trap(messages_.Boxes(), "DeleteKey", [&] {
    if (path.empty()) return kStatusNotFound;
    KeyHandle handle = 0;
    auto status = store_.OpenKey(path, KeyAccess::ReadWrite, handle);
    if (status != kStatusSuccess) return status;
    const auto below = path.back() == '\\' ? path : path + "\\";
    for (;;) {
      std::string subkey;
      status = store_.EnumKey(handle, 0, subkey);
      if (status == kStatusNoMoreItems) {
        status = store_.DeleteKey(path);
        break;
      }
      if (status != kStatusSuccess) break;
      // A subkey that stays would be met again at index 0 for ever.
      status = DeleteKey(below + subkey);
      if (status == kStatusNotFound) {
        // Deleted meanwhile, or its name has letters that the code page lacks: the key, which is
        // refused while it holds one, tells which.
        status = store_.DeleteKey(path);
        break;
      }
      if (status != kStatusSuccess) break;
    }
    store_.CloseKey(handle);
    return status;
  });
}

std::vector<std::string> RegistryAccess::EnumSubKeys(const std::string& path, std::int16_t& count,
                                                     std::string_view message,
                                                     const std::string& title, bool showMessage) {
  return Trap(messages_.Boxes(), "EnumSubKeys", [&] {
    std::vector<std::string> names;
    count = 0;
    KeyHandle handle = 0;
    if (store_.OpenKey(path, KeyAccess::EnumerateSubkeys, handle) != kStatusSuccess) {
      if (showMessage) messages_.Boxes().ShowMessage(std::string(message), kBoxOk, title);
      return names;
    }
    std::string name;
    for (std::uint32_t i = 0; store_.EnumKey(handle, i, name) == kStatusSuccess; ++i) {
      names.push_back(name.substr(0, name.find('\0')));
    }
    store_.CloseKey(handle);
    count = Checked<std::int16_t>(names.size());
    return names;
  });
}

}  // namespace morvelle
