#include "core/write_plan.h"

#include <array>
#include <utility>

#include "app/messages/errors.h"

namespace morvelle {

namespace {

constexpr std::array<std::string_view, 5> kCriterionValues = {"Type", "Flags", "Logic", "Value",
                                                              "ValueType"};

}  // namespace

bool WritePlan::IsStored(const std::string& path, std::string_view name,
                         const std::string& text) const {
  const OpenedKey key(registry_, path, false);
  if (path.empty() || !key.IsOpen() || IsMissing(key, name)) return false;
  // A value of a type that has no text was read as an empty one.
  return TextOf(registry_.Peek(key.Handle(), name)) == text;
}

bool WritePlan::IsMissing(const OpenedKey& key, std::string_view name) const {
  ValueKind kind{};
  std::uint32_t size = 0;
  return registry_.Store().DescribeValue(key.Handle(), name, kind, size) == kStatusNotFound;
}

bool WritePlan::LacksValue(const std::string& path, std::string_view name) const {
  const OpenedKey key(registry_, path, false);
  return !path.empty() && key.IsOpen() && IsMissing(key, name);
}

void WritePlan::CreateKey(const std::string& path) { Add({Verb::CreateKey, path, {}, {}, {}, {}}); }

bool WritePlan::SetNumber(const std::string& path, std::string_view name, const std::string& text,
                          const std::string& storedIn) {
  if (IsStored(storedIn, name, text)) return false;
  const bool negative = !text.empty() && text.front() == '-';
  Add({Verb::SetValue,
       path,
       std::string(name),
       ValueKind::Dword,
       ToLong(negative ? text : "0" + text),
       {}});
  return true;
}

bool WritePlan::SetValue(const std::string& path, std::string_view name, ValueKind kind,
                         const std::string& text, const std::string& storedIn) {
  if (IsStored(storedIn, name, text)) return false;
  Add({Verb::SetValue, path, std::string(name), kind, text, {}});
  return true;
}

void WritePlan::DeleteValue(const std::string& path, std::string_view name) {
  Add({Verb::DeleteValue, path, std::string(name), {}, {}, {}});
}

void WritePlan::DeleteKey(const std::string& path) { Add({Verb::DeleteKey, path, {}, {}, {}, {}}); }

void WritePlan::RenameSubkeys(const std::string& path, std::vector<KeyRename> renames) {
  Add({Verb::RenameSubkeys, path, {}, {}, {}, std::move(renames)});
}

RegistryStatus WritePlan::MayWrite() const {
  const auto statusOf = [this](const std::string& path) {
    const auto status = OpenedKey(registry_, path, false).Status();
    return status == kStatusNotFound ? kStatusSuccess : status;
  };
  const std::string* last = nullptr;
  for (const auto& step : steps_) {
    if (last != nullptr && *last == step.path && step.renames.empty()) continue;
    last = &step.path;
    auto status = statusOf(step.path);
    for (const auto& rename : step.renames) {
      if (status == kStatusSuccess) status = statusOf(step.path + "\\" + rename.from);
    }
    if (status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

RegistryStatus WritePlan::Apply() const {
  // On a store where each write is final, what was written before a refusal would stay.
  if (const auto status = MayWrite(); status != kStatusSuccess) return status;
  for (const auto& step : steps_) {
    if (const auto status = Apply(step); status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

RegistryStatus WritePlan::Apply(const Step& step) const {
  const auto goneIsDone = [](RegistryStatus status) {
    return status == kStatusNotFound ? kStatusSuccess : status;
  };
  switch (step.verb) {
    case Verb::DeleteKey:
      return goneIsDone(registry_.DeleteKey(step.path));
    case Verb::RenameSubkeys:
      return registry_.Store().RenameSubkeys(step.path, step.renames, kCriterionValues);
    default:
      break;
  }
  const OpenedKey key(registry_, step.path, true);
  if (!key.IsOpen()) return key.Status();
  switch (step.verb) {
    case Verb::SetValue:
      return registry_.SetKeyValue(key.Handle(), step.name, step.kind, step.value);
    case Verb::DeleteValue:
      return goneIsDone(registry_.Store().DeleteValue(key.Handle(), step.name));
    default:
      return kStatusSuccess;
  }
}

}  // namespace morvelle
