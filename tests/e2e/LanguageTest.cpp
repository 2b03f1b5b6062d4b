// The module in the user's language: the English and French libraries beside the module file, chosen by
// the stored code, and what the user sees when the code or the library is not right.
#include "CadhostRun.h"

#include <fstream>

namespace e2e {
namespace {

const std::string kOpenAndShow = "_ViraCoordDef\n@dialog 4000 dump\n@esc\n";

// The dump of the transformation dialog as it opens, up to its prompt.
std::string dialogDump(const std::string& transcript) {
  const std::string dump = after(transcript, "dialog 4000 ");
  return dump.substr(0, dump.find("Zeichnungspunkt"));
}

class LanguageTest : public CadhostTest {
 protected:
  // A module installed in a folder of its own, so that the test decides what lies beside it.
  fs::path installModule() {
    const fs::path folder = dir_ / "t10";
    fs::create_directories(folder);
    fs::copy_file(VIRA_MODULE_PATH, folder / "ViraCadtoolsV10.so");
    module_ = (folder / "ViraCadtoolsV10.so").string();
    return folder;
  }
};

TEST_F(LanguageTest, TransformationDialogInEnglishAndFrench) {
  setLanguage("ENG");
  HostRun run = cadhost(kOpenAndShow);
  ASSERT_EQ(run.status, 0) << run.err;
  // The library replaces the template's texts; the preview is the module's own and stays German.
  std::string dump = dialogDump(run.out);
  EXPECT_EQ(dump.substr(0, dump.find('\n')), "dialog 4000 \"Move and Rotate the Whole Drawing\"");
  EXPECT_NE(dump.find("-1 static \"Target coordinates\"\n"), std::string::npos) << dump;
  EXPECT_THAT(dump, ::testing::HasSubstr("4014 static \"Es ist noch keine Transformation definiert\"\n"
                                         "2 button \"Cancel\"\n"));
  EXPECT_EQ(run.out.find("[message]"), std::string::npos) << run.out;

  setLanguage("FRA");
  run = cadhost(kOpenAndShow);
  ASSERT_EQ(run.status, 0) << run.err;
  dump = dialogDump(run.out);
  EXPECT_EQ(dump.substr(0, dump.find('\n')), "dialog 4000 \"Déplacer et faire pivoter tout le dessin\"");
  EXPECT_THAT(dump, ::testing::AllOf(::testing::HasSubstr("-1 static \"Coordonnées cibles\"\n"),
                                     ::testing::HasSubstr("2 button \"Annuler\"\n"),
                                     ::testing::HasSubstr("4015 checkbox \"Mettre le dessin à l'échelle si les "
                                                          "coordonnées cibles donnent un facteur d'échelle.\"\n")));
}

TEST_F(LanguageTest, CaptureDialogAndListMenuInEachLanguage) {
  // One point captured, then the list's context menu opened on it and its first entry chosen.
  const std::string script = "_ViraPtPick\n1.25,2,3\n@dialog 4001 dump\n@dialog 4001 menu 4000 0 1 3\n@esc\n";
  const struct {
    std::string code, title, label, save, menu, sort;
  } languages[] = {
      {"", "Punkte erfassen", "N\u00e4chste Punktnummer:", "Speichern als...",
       "\"Spalte aufsteigend sortieren\" \"Spalte absteigend sortieren\" \"Microsoft Excel...\" \"Drucken\" "
       "\"L\u00f6schen\"",
       "Spalte aufsteigend sortieren"},
      {"ENG", "Capture Points", "Next point number:", "Save As...",
       "\"Sort Column ascending\" \"Sort Column descending\" \"Microsoft Excel...\" \"Print\" \"Delete\"",
       "Sort Column ascending"},
      {"FRA", "Saisie de points", "Num\u00e9ro du point suivant :", "Enregistrer sous...",
       "\"Trier la colonne par ordre croissant\" \"Trier la colonne par ordre d\u00e9croissant\" "
       "\"Microsoft Excel...\" \"Imprimer\" \"Supprimer\"",
       "Trier la colonne par ordre croissant"},
  };
  for (const auto& language : languages) {
    setLanguage(language.code);
    HostRun run = cadhost(script);
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string dump = after(run.out, "dialog 4001 ");
    EXPECT_EQ(dump.substr(0, dump.find("\n  header")), "dialog 4001 \"" + language.title + "\"\n4000 list \"\"")
        << language.code;
    EXPECT_NE(dump.find("\n-1 static \"" + language.label + "\"\n"), std::string::npos) << dump;
    EXPECT_NE(dump.find("\n4002 button \"" + language.save + "\"\n"), std::string::npos) << dump;
    // Nothing is selected yet, so there is nothing to delete.
    EXPECT_THAT(run.out, ::testing::HasSubstr("\n[menu] " + language.menu + " disabled -> \"" + language.sort + "\"\n"));
  }
}

TEST_F(LanguageTest, ShortCodesMissingAndBrokenLibrariesLeaveTheModuleGerman) {
  const std::string german = "dialog 4000 \"Ganze Zeichnung verschieben und drehen\"\n";
  const std::string warning =
      "\\n\\nA part of TRELLANOVA 10 will not switch into the desired language.\\nEin Teil von TRELLANOVA 10 wird "
      "die Sprache nicht umschalten.\\nUne partie de TRELLANOVA 10 va pas changer dans la langue souhaitée\" (ok) "
      "-> ok\n";

  // Two characters are no language code: German, and no library is even looked for.
  setLanguage("EN");
  HostRun run = cadhost(kOpenAndShow);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.find("[message]"), std::string::npos) << run.out;
  EXPECT_EQ(dialogDump(run.out).substr(0, german.size()), german);

  // No English library beside the module; half a French one: its version record is gone with the rest, so
  // it is never loaded.
  const fs::path folder = installModule();
  const std::string bytes = slurp(fs::path(VIRA_MODULE_PATH).parent_path() / "ViraCadtoolsV10_FRA.so");
  ASSERT_GT(bytes.size(), 1000u);
  std::ofstream(folder / "ViraCadtoolsV10_FRA.so", std::ios::binary) << bytes.substr(0, bytes.size() / 2);
  for (const auto& [code, reason] :
       {std::pair{"ENG", "No such file or directory"}, {"FRA", "IsValidVersion() failed"}}) {
    setLanguage(code);
    run = cadhost(kOpenAndShow);
    ASSERT_EQ(run.status, 0) << run.err;
    const fs::path library = folder / ("ViraCadtoolsV10_" + std::string(code) + ".so");
    EXPECT_EQ(run.out.substr(0, run.out.find("Command:")),
              "[message] \"Error Loading Language DLL " + library.string() + " \\n" + reason + warning);
    EXPECT_EQ(dialogDump(run.out).substr(0, german.size()), german);
  }
}

}  // namespace
}  // namespace e2e
