#include "core/write_plan.h"

#include <array>
#include <utility>

#include "app/messages/errors.h"

namespace morvelle {

namespace {

constexpr std::array<std::string_view, 5> kCriterionValues = {"Type", "Flags", "Logic", "Value",
                                                              "ValueType"};
/// Steps of a rule of four word lists and one action.
constexpr std::size_t kUsualSteps = 48;

/// Whether a path leads to a key or below it. Paths of one plan are spelt alike.
bool IsBelow(std::string_view path, std::string_view key) {
  return !key.empty() && path.starts_with(key) &&
         (path.size() == key.size() || path[key.size()] == '\\');
}

}  // namespace

WritePlan::Step& WritePlan::Add(Verb verb, const std::string& path, std::string_view name) {
  if (steps_.empty()) steps_.reserve(kUsualSteps);
  if (paths_.empty() || paths_.back() != path) paths_.push_back(path);
  return steps_.emplace_back(Step{verb, paths_.size() - 1, std::string(name), {}, {}, {}});
}

const OpenedKey* WritePlan::Look(const std::string& path) {
  if (path.empty() || IsBelow(path, missing_)) return nullptr;
  if (looked_ == nullptr || lookedAt_ != path) {
    looked_.reset();
    lookedAt_ = path;
    looked_ = std::make_unique<OpenedKey>(registry_, path, false);
    if (looked_->Status() == kStatusNotFound) missing_ = path;
  }
  return looked_->IsOpen() ? looked_.get() : nullptr;
}

bool WritePlan::IsStored(const std::string& path, std::string_view name, const std::string& text) {
  const auto* key = Look(path);
  if (key == nullptr || IsMissing(*key, name)) return false;
  // A value of a type that has no text was read as an empty one.
  return TextOf(registry_.Peek(key->Handle(), name)) == text;
}

bool WritePlan::IsMissing(const OpenedKey& key, std::string_view name) const {
  ValueKind kind{};
  std::uint32_t size = 0;
  return registry_.Store().DescribeValue(key.Handle(), name, kind, size) == kStatusNotFound;
}

bool WritePlan::LacksValue(const std::string& path, std::string_view name) {
  const auto* key = Look(path);
  return key != nullptr && IsMissing(*key, name);
}

void WritePlan::CreateKey(const std::string& path) { Add(Verb::CreateKey, path); }

bool WritePlan::SetNumber(const std::string& path, std::string_view name, const std::string& text,
                          const std::string& storedIn) {
  if (IsStored(storedIn, name, text)) return false;
  const bool negative = !text.empty() && text.front() == '-';
  const auto number = ToLong(negative ? text : "0" + text);
  auto& step = Add(Verb::SetValue, path, name);
  step.kind = ValueKind::Dword;
  step.value = number;
  return true;
}

bool WritePlan::SetValue(const std::string& path, std::string_view name, ValueKind kind,
                         const std::string& text, const std::string& storedIn) {
  if (IsStored(storedIn, name, text)) return false;
  auto& step = Add(Verb::SetValue, path, name);
  step.kind = kind;
  step.value = text;
  return true;
}

void WritePlan::DeleteValue(const std::string& path, std::string_view name) {
  Add(Verb::DeleteValue, path, name);
}

void WritePlan::DeleteKey(const std::string& path) { Add(Verb::DeleteKey, path); }

void WritePlan::RenameSubkeys(const std::string& path, std::vector<KeyRename> renames) {
  Add(Verb::RenameSubkeys, path).renames = std::move(renames);
}

RegistryStatus WritePlan::MayWrite() const {
  std::string missing;
  const auto statusOf = [&](const std::string& path) {
    if (IsBelow(path, missing)) return kStatusSuccess;
    const auto status = OpenedKey(registry_, path, false).Status();
    if (status != kStatusNotFound) return status;
    missing = path;
    return kStatusSuccess;
  };
  for (const auto& path : paths_) {
    if (const auto status = statusOf(path); status != kStatusSuccess) return status;
  }
  for (const auto& step : steps_) {
    for (const auto& rename : step.renames) {
      const auto status = statusOf(paths_[step.path] + "\\" + rename.from);
      if (status != kStatusSuccess) return status;
    }
  }
  return kStatusSuccess;
}

RegistryStatus WritePlan::Apply() {
  looked_.reset();
  // On a store where each write is final, what was written before a refusal would stay.
  if (const auto status = MayWrite(); status != kStatusSuccess) return status;
  std::unique_ptr<OpenedKey> key;
  std::size_t pathOfKey = 0;
  for (const auto& step : steps_) {
    const auto status = Apply(step, key, pathOfKey);
    if (status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

RegistryStatus WritePlan::Apply(const Step& step, std::unique_ptr<OpenedKey>& key,
                                std::size_t& pathOfKey) const {
  const auto goneIsDone = [](RegistryStatus status) {
    return status == kStatusNotFound ? kStatusSuccess : status;
  };
  const auto& path = paths_[step.path];
  if (step.verb == Verb::DeleteKey || step.verb == Verb::RenameSubkeys) {
    // The open key may be among those that go.
    key.reset();
    if (step.verb == Verb::DeleteKey) return goneIsDone(registry_.DeleteKey(path));
    return registry_.Store().RenameSubkeys(path, step.renames, kCriterionValues);
  }
  if (key == nullptr || pathOfKey != step.path) {
    key.reset();
    key = std::make_unique<OpenedKey>(registry_, path, true);
    pathOfKey = step.path;
  }
  if (!key->IsOpen()) return key->Status();
  switch (step.verb) {
    case Verb::SetValue:
      return registry_.SetKeyValue(key->Handle(), step.name, step.kind, step.value);
    case Verb::DeleteValue:
      return goneIsDone(registry_.Store().DeleteValue(key->Handle(), step.name));
    default:
      return kStatusSuccess;
  }
}

}  // namespace morvelle
