#include "core/damage_report.h"

#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::string_view kUnreadableOrder =
    "L'ordre des règles est illisible\u00A0: elles sont montrées dans l'ordre de leurs clefs."_cp;
constexpr std::string_view kTooManyWords =
    "Une règle dont une liste compte plus de 32\u00A0767 mots ne peut être ni ouverte ni "
    "modifiée\u00A0:"_cp;

}  // namespace

void DamageReport::BadValueReport(std::string_view table) {
  Trap(messages_.Boxes(), "BadValueReport", [&] {
    ++count_;
    if (table == "Mail") {
      if (!starting_) return;
      starting_ = false;
      messages_.Msg("Il n'existe pas encore de règle de courrier"_cp);
    } else if (table == "Identity") {
      messages_.Msg("Identité introuvable"_cp);
    } else if (table == "Rule" || table == "Actions" || table == "Criteria" ||
               table == "ActionsParam" || table == "CriteriaParam") {
      if (reported_) return;
      reported_ = true;
      messages_.Msg(std::string("La règle \""_cp) + ruleLabel_ +
                    std::string("\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp));
    }
  });
}

void DamageReport::UnreadableValue(std::string_view description, std::string_view name) {
  ++count_;
  if (!unreadable_) {
    messages_.Msg(description);
    return;
  }
  unreadable_->Say(description, ruleLabel_ + ", " + std::string(name));
}

void DamageReport::BeginLoad() {
  reported_ = false;
  unreadable_.emplace(messages_);
}

void DamageReport::EndLoad() {
  if (unreadable_) unreadable_->Finish("Ce qui n'a pu être lu non plus\u00A0:"_cp);
  unreadable_.reset();
}

void DamageReport::UnreadableOrder() {
  if (std::exchange(orderTold_, true)) return;
  messages_.Msg(kUnreadableOrder, kBoxExclamation);
}

void DamageReport::TooManyWords(const std::vector<std::string>& names) {
  if (names.empty() || std::exchange(wordsTold_, true)) return;
  messages_.MsgNamed(kTooManyWords, names);
}

}  // namespace morvelle
