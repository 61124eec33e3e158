#include "core/write_plan.h"

#include <array>
#include <memory>
#include <utility>

#include "app/messages/errors.h"

namespace morvelle {

namespace {

constexpr std::array<std::string_view, 5> kCriterionValues = {"Type", "Flags", "Logic", "Value",
                                                              "ValueType"};

RegistryStatus GoneIsDone(RegistryStatus status) {
  return status == kStatusNotFound ? kStatusSuccess : status;
}

}  // namespace

bool WritePlan::IsStored(const std::string& path, std::string_view name,
                         const std::string& text) const {
  if (path.empty() || IsKnownMissing(path)) return false;
  const OpenedKey key(registry_, path, false);
  if (!key.IsOpen()) {
    missing_ = path;
    return false;
  }
  if (IsMissing(key, name)) return false;
  // A value of a type that has no text was read as an empty one.
  return TextOf(registry_.Peek(key.Handle(), name)) == text;
}

bool WritePlan::IsKnownMissing(const std::string& path) const {
  // What lies below a missing key is missing, too.
  return !missing_.empty() && path.starts_with(missing_) &&
         (path.size() == missing_.size() || path[missing_.size()] == '\\');
}

bool WritePlan::IsMissing(const OpenedKey& key, std::string_view name) const {
  ValueKind kind{};
  std::uint32_t size = 0;
  return registry_.Store().DescribeValue(key.Handle(), name, kind, size) == kStatusNotFound;
}

bool WritePlan::LacksValue(const std::string& path, std::string_view name) const {
  if (IsKnownMissing(path)) return false;
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

RegistryStatus WritePlan::Apply() const {
  // Most steps write to the key of the one before.
  std::unique_ptr<OpenedKey> key;
  const std::string* open = nullptr;
  for (const auto& step : steps_) {
    const bool inside = step.verb != Verb::DeleteKey && step.verb != Verb::RenameSubkeys;
    if (!inside) {
      key.reset();
      open = nullptr;
    } else if (open == nullptr || *open != step.path) {
      key.reset();
      key = std::make_unique<OpenedKey>(registry_, step.path, true);
      open = &step.path;
      if (!key->IsOpen()) return kStatusAccessDenied;
    }
    const auto status = inside ? ApplyInside(step, key->Handle()) : ApplyToKey(step);
    if (status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

RegistryStatus WritePlan::ApplyToKey(const Step& step) const {
  if (step.verb == Verb::DeleteKey) return GoneIsDone(registry_.DeleteKey(step.path));
  return registry_.Store().RenameSubkeys(step.path, step.renames, kCriterionValues);
}

RegistryStatus WritePlan::ApplyInside(const Step& step, KeyHandle key) const {
  if (step.verb == Verb::SetValue) {
    return registry_.SetKeyValue(key, step.name, step.kind, step.value);
  }
  if (step.verb == Verb::DeleteValue) {
    return GoneIsDone(registry_.Store().DeleteValue(key, step.name));
  }
  return kStatusSuccess;
}

}  // namespace morvelle
