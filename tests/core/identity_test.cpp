#include "core/identity.h"

#include "app/messages/errors.h"
#include "tests/core/rule_model.h"
#include "tests/support/fake_environment.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

constexpr std::string_view kFatal =
    "Il n'existe aucune identité ou le registre est endommagé.\r\rLe programme va être "
    "interrompu !"_cp;

class FindIDTest : public testing::Test {
 protected:
  RuleModel model;
  FakeEnvironment environment{"/nulle/part"};
  Identity identity;
  IdentityFinder finder{model.registry, environment, model.display, identity};

  void ExpectFatal() {
    model.dialogs.Expect(kFatal, kBoxStop, "FindID");
    EXPECT_THROW(finder.FindID(), ProgramEnd);
    model.dialogs.ExpectAllShown();
  }
  /// The store root that a start finds where the registry holds this one.
  std::string RootFrom(std::string_view stored) {
    model.set.PutText(kTestSettingsKey, "Store Root", stored, ValueKind::ExpandString);
    EXPECT_TRUE(finder.FindID());
    return identity.StoreRoot;
  }
};

TEST_F(FindIDTest, FindsAndShowsTheIdentity) {
  model.set.Order("000");
  EXPECT_TRUE(finder.FindID());
  EXPECT_EQ(identity.MailKey, kTestMailKey);
  EXPECT_EQ(identity.IdentityId, kTestIdentity);
  EXPECT_EQ(identity.StoreRoot, "C:\\Courrier");
  std::string panels;
  for (const auto& [number, text] : model.display.panels) {
    panels += std::to_string(number) + " " + ToUtf8(text) + ", ";
  }
  EXPECT_EQ(panels, "1 Identité, 2 0A1B2C3D, 3 4E5F, 4 6071, 5 8293, 6 A4B5C6D7E8F9, ");
}

TEST_F(FindIDTest, EveryKeyThatIsMissingAndADamagedUserIdAreFatal) {
  model.set.PutText("Identities", "Last User ID", "{");
  ExpectFatal();
  model.set.PutText("Identities", "Last User ID", kTestIdentity);
  const auto identityKey = "Identities\\" + std::string(kTestIdentity);
  for (const auto& gone : {kTestSettingsKey, identityKey, "Identities"s}) {
    model.registry.DeleteKey(gone);
    ExpectFatal();
  }
  EXPECT_EQ(DumpOf(model.store, ""), "\n") << "nothing is made on the way";
}

TEST_F(FindIDTest, ExpandsTheVariableAtTheHeadOfTheStoreRoot) {
  model.set.Order("");
  environment.variables["userprofile"] = "C:\\Documents and Settings\\Moi";
  EXPECT_EQ(RootFrom("%UserProfile%\\Local\\%autre%\\Outlook Express\\"),
            "C:\\Documents and Settings\\Moi\\Local\\%autre%\\Outlook Express");
  EXPECT_EQ(RootFrom("%UserProfile%\\"), "C:\\Documents and Settings\\Moi");
  EXPECT_EQ(RootFrom("D:\\%UserProfile%\\x\\\\"), "D:\\%UserProfile%\\x\\");
  for (const auto* const kept : {"%Inconnue%\\x", "%seul", "%", ""}) {
    EXPECT_EQ(RootFrom(kept), kept);
  }
  model.set.Remove(kTestSettingsKey, "Store Root");
  identity.StoreRoot = "avant";
  EXPECT_TRUE(finder.FindID()) << "no store root is no error";
  EXPECT_EQ(identity.StoreRoot, "");
}

TEST_F(FindIDTest, ARulesKeyThatCannotBeMadeEndsTheProgram) {
  model.dialogs.AllowAnyBox();
  model.store.commitOutcome = CommitOutcome::Failed;
  EXPECT_THROW(finder.FindID(), ProgramEnd);
  EXPECT_EQ(model.dialogs.shown.back(),
            (ShownBox{std::string("Impossible de créer la clef"_cp), kBoxOk, "CreateKey"}));
  EXPECT_EQ(model.dialogs.shown.size(), 2U) << "no empty box where the store gives no reason";
  EXPECT_EQ(model.Dump(), "(no such key)");
}

}  // namespace
}  // namespace morvelle
