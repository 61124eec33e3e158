#include "core/whole_rules.h"

#include <variant>
#include <vector>

#include "app/messages/text.h"
#include "core/rule_tables.h"

namespace morvelle {

namespace {

/// A file gives a key before what is below it, and its values in one piece. One that was cut
/// therefore still names, in its orders, the keys that it lost.
class WholeRules {
 public:
  WholeRules(RegistryAccess& registry, const ExchangeFile& file, const std::string& mailKey)
      : registry_(registry), file_(file), mailKey_(mailKey), lastKey_(file.lastKey + "\\") {}

  [[nodiscard]] bool Check() const {
    const bool isLast = EqualIgnoringCase(lastKey_.substr(0, mailKey_.size()), mailKey_);
    if (file_.inPart || (isLast && !file_.closed)) return false;
    const auto ids = OrderOf(mailKey_);
    if (!ids) return false;
    for (const auto& id : *ids) {
      if (!HoldsEntries(mailKey_ + id + "\\Actions\\", false)) return false;
      if (!HoldsEntries(mailKey_ + id + "\\Criteria\\", true)) return false;
    }
    return true;
  }

 private:
  [[nodiscard]] std::optional<std::vector<std::string>> OrderOf(const std::string& path) const {
    const OpenedKey key(registry_, path, false);
    if (!key.IsOpen()) return std::nullopt;
    const auto order = registry_.Peek(key.Handle(), "Order");
    const auto* text = std::get_if<std::string>(&order);
    if (text == nullptr) return std::nullopt;
    return IdsOfOrder(*text);
  }

  [[nodiscard]] bool HoldsEntries(const std::string& path, bool mayLackFirst) const {
    const auto ids = OrderOf(path);
    if (!ids) return false;
    for (const auto& id : *ids) {
      if (OpenedKey(registry_, path + id, false).IsOpen()) continue;
      // A rule without criteria names one that is not there; one that lost its end may do so too.
      const bool isWithout = mayLackFirst && ids->size() == 1 && id == "000";
      if (!isWithout || EqualIgnoringCase(lastKey_, path)) return false;
    }
    return true;
  }

  RegistryAccess& registry_;
  const ExchangeFile& file_;
  const std::string& mailKey_;
  std::string lastKey_;
};

}  // namespace

bool HoldsAllRules(RegistryAccess& registry, const std::string& mailKey) {
  const auto file = registry.Store().Exchange();
  return !file || WholeRules(registry, *file, mailKey).Check();
}

}  // namespace morvelle
