#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "host/headless/ScriptInput.h"
#include "host/ui/UiThread.h"
#include "sdk/ui/AfxThread.h"
#include "sdk/ui/CFileDialog.h"
#include "sdk/ui/CToolBar.h"
#include "sdk/ui/MessageBox.h"
#include "UiTestDialog.h"

using host::headless::ScriptError;

namespace uitest {
namespace {

TEST_F(UiTest, ScriptLinesThatCannotBeCarriedOutSayWhy) {
  EXPECT_TRUE(host::headless::isUiScriptLine("@dialog 900 dump"));
  EXPECT_TRUE(host::headless::isUiScriptLine("@toolbar 40001"));
  EXPECT_FALSE(host::headless::isUiScriptLine("@dialogs 900 dump"));
  EXPECT_FALSE(host::headless::isUiScriptLine("@esc"));

  EXPECT_EQ(fail("@dialog 900 dump"), "no dialog 900 is open");
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(kDialog));
  EXPECT_EQ(fail("@dialog"), "missing argument: @dialog ID VERB ...");
  EXPECT_EQ(fail("@dialog x dump"), "\"x\" is not a number: @dialog ID VERB ...");
  EXPECT_EQ(fail("@dialog 900"), "missing verb: @dialog ID VERB ...");
  EXPECT_EQ(fail("@dialog 900 frob 10"),
            "unknown @dialog verb \"frob\" (set, check, click, updown, key, select, header, menu, dump)");
  EXPECT_EQ(fail("@dialog 900 click"), "missing argument: @dialog ID click CTRL");
  EXPECT_EQ(fail("@dialog 900 click -1"), "dialog 900 has no control -1");
  EXPECT_EQ(fail("@dialog 900 set 12 x"), "control 12 of dialog 900 is a checkbox, not an edit");
  EXPECT_EQ(fail("@dialog 900 key 10 Hyper"), "unknown key \"Hyper\"");
  EXPECT_EQ(fail("@dialog 900 key 10"), "missing key: @dialog ID key CTRL KEY");
  EXPECT_EQ(fail("@answer message maybe"),
            "unknown answer \"maybe\": @answer message yes|no|ok|cancel|abort|retry|ignore");
  EXPECT_EQ(fail("@answer"),
            "@answer needs file, message or print: @answer file PATH|cancel, @answer message ANSWER, "
            "@answer print PATH|cancel");
  EXPECT_EQ(fail("@answer print"), "missing path: @answer print PATH|cancel");
  EXPECT_EQ(fail("@toolbar"), "missing argument: @toolbar CMD");

  // Text typed into an edit keeps its inner blanks and its non-ASCII characters.
  run("@dialog 900 set 10 Maßstab  1.5 ");
  EXPECT_EQ(dialog.GetDlgItemText(kEdit), L"Maßstab  1.5 ");
}

TEST_F(UiTest, MessageBoxesTakeQueuedAnswersAndWriteQuestionAndAnswer) {
  int answer = 0;
  run("@answer message yes");
  EXPECT_EQ(transcriptOf([&] { answer = AfxMessageBox(L"Selektierte Daten löschen?", MB_YESNO | MB_ICONQUESTION); }),
            "[message] \"Selektierte Daten löschen?\" (yes/no) -> yes\n");
  EXPECT_EQ(answer, IDYES);
  // A box with only OK needs no answer; a string resource is shown with its line break escaped.
  EXPECT_EQ(transcriptOf([&] { answer = AfxMessageBox(1); }), "[message] \"Zeile eins\\nZeile zwei\" (ok) -> ok\n");
  EXPECT_EQ(answer, IDOK);
  run("@answer message cancel");
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(kDialog));
  EXPECT_EQ(transcriptOf([&] { answer = dialog.MessageBox(L"Text", L"Titel", MB_OKCANCEL); }),
            "[message \"Titel\"] \"Text\" (ok/cancel) -> cancel\n");
  EXPECT_EQ(answer, IDCANCEL);
  // Without an answer and with no script left, the box is cancelled: No where there is no Cancel.
  transcriptOf([&] { answer = AfxMessageBox(L"Weiter?", MB_YESNO); });
  EXPECT_EQ(answer, IDNO);
  transcriptOf([&] { answer = AfxMessageBox(L"Fehler", MB_ABORTRETRYIGNORE); });
  EXPECT_EQ(answer, IDIGNORE);
  // An answer the box does not offer means the script is out of step.
  run("@answer message retry");
  EXPECT_THROW(AfxMessageBox(L"Weiter?", MB_YESNO), ScriptError);
}

TEST_F(UiTest, FileDialogsTakeQueuedPathsAndAddTheDefaultExtension) {
  const std::wstring filter = L"Excel (*.csv)|*.csv|Text (*.txt)|*.txt||";
  run("@answer file /tmp/vira ui/points");
  run("@answer file /tmp/Data.TXT");
  run("@answer file cancel");
  CFileDialog save(false, L".csv", L"", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, filter);
  int result = 0;
  EXPECT_EQ(transcriptOf([&] { result = save.DoModal(); }),
            "[file save] \"Excel (*.csv)|*.csv|Text (*.txt)|*.txt||\" -> /tmp/vira ui/points\n");
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(save.GetPathName(), L"/tmp/vira ui/points.csv");
  transcriptOf([&] { result = save.DoModal(); });
  EXPECT_EQ(save.GetFileExt(), L"TXT");
  EXPECT_EQ(transcriptOf([&] { result = save.DoModal(); }),
            "[file save] \"Excel (*.csv)|*.csv|Text (*.txt)|*.txt||\" -> cancel\n");
  EXPECT_EQ(result, IDCANCEL);
  transcriptOf([&] { result = save.DoModal(); });  // nothing queued, no script: cancelled
  EXPECT_EQ(result, IDCANCEL);

  run("@answer file /nonexistent/drawing.dxf");
  CFileDialog open(true, L"dxf", L"", OFN_FILEMUSTEXIST, L"DXF (*.dxf)|*.dxf||");
  EXPECT_THROW(open.DoModal(), ScriptError);
}

TEST_F(UiTest, ToolbarButtonsReachTheToolbarOrItsOwner) {
  struct Recorder : CDialog {
    std::vector<int> commands;
    bool OnCommand(int id, int code) override {
      if (code == BN_CLICKED) commands.push_back(id);
      return true;
    }
  };
  struct Bar : CToolBar {
    std::vector<int> commands;
    bool OnCommand(int id, int) override {
      if (id != 40002) return false;
      commands.push_back(id);
      return true;
    }
  };
  Bar bar;
  Recorder owner;
  ASSERT_TRUE(owner.Create(kDialog));
  ASSERT_TRUE(bar.CreateEx(AfxGetMainWnd(), TBSTYLE_FLAT, WS_CHILD | WS_VISIBLE | 0x2000, CRect(), AFX_IDW_TOOLBAR));
  EXPECT_FALSE(bar.LoadToolBar(4008));
  EXPECT_EQ(fail("@toolbar 40002"), "no toolbar has a button 40002");
  ASSERT_TRUE(bar.LoadToolBar(kToolbar));
  EXPECT_EQ(bar.GetCount(), 3);
  EXPECT_EQ(bar.GetItemID(1), 0);
  bar.SetWindowText(L"VIRA cadtools");
  bar.SetOwner(&owner);
  run("@toolbar 40002");
  run("@toolbar 40001");
  EXPECT_EQ(bar.commands, std::vector<int>{40002});
  EXPECT_EQ(owner.commands, std::vector<int>{40001});
  EXPECT_EQ(fail("@toolbar 0"), "no toolbar has a button 0");
  bar.DestroyWindow();
  EXPECT_EQ(fail("@toolbar 40001"), "no toolbar has a button 40001");
}

TEST_F(UiTest, LanguageResourcesReplaceWhatTheyHaveAndFallBackForTheRest) {
  ui::ResourceModule english;
  english.dialogs[kDialog] = resources_.dialogs[kDialog];
  english.dialogs[kDialog].title = L"Test dialog";
  ui::registerResourceModule(&english);
  AfxSetResourceHandle(&english);
  {
    TestDialog dialog;
    ASSERT_TRUE(dialog.Create(kDialog));
    EXPECT_EQ(dialog.GetWindowText(), L"Test dialog");
  }
  std::wstring text;
  EXPECT_TRUE(AfxLoadString(1, text));  // not in the language module: the module's own
  EXPECT_EQ(text, L"Zeile eins\nZeile zwei");
  EXPECT_FALSE(AfxLoadString(2, text));
  EXPECT_EQ(text, L"");
  ui::unregisterResourceModule(&english);
  EXPECT_EQ(AfxGetResourceHandle(), &resources_);

  std::wstring error;
  EXPECT_EQ(ui::loadResourceLibrary(L"/nonexistent/ViraCadtoolsV10_ENG.so", error), nullptr);
  EXPECT_EQ(error, L"No such file or directory");
  EXPECT_EQ(ui::loadResourceLibrary(L"" VIRA_HOST_LIBRARY, error), nullptr);
  EXPECT_EQ(error, L"the library holds no resources (no UiResourceModule)");
}

TEST_F(UiTest, LanguageLibraryLoadedAtRunTimeProvidesItsResources) {
  std::wstring error = L"stale";
  const ui::ResourceHandle library = ui::loadResourceLibrary(L"" VIRA_UI_TEST_LANGUAGE, error);
  ASSERT_NE(library, nullptr) << std::string(error.begin(), error.end());
  EXPECT_EQ(error, L"");
  EXPECT_EQ(library->version.at(L"FileVersion"), L"10.0.0.1");
  AfxSetResourceHandle(library);
  TestDialog dialog;
  ASSERT_TRUE(dialog.Create(kDialog));
  EXPECT_EQ(transcriptOf([] { run("@dialog 900 dump"); }), "dialog 900 \"Test dialog\"\n1 button \"OK\"\n");
  std::wstring text;
  EXPECT_TRUE(AfxLoadString(2, text));
  EXPECT_EQ(text, L"Delete Selected Data?");
  AfxSetResourceHandle(&resources_);
}

TEST_F(UiTest, ModalDialogOfAWorkerRunsOnTheUiThread) {
  struct ThreadDialog : TestDialog {
    std::thread::id initThread;
    bool OnInitDialog() override {
      initThread = std::this_thread::get_id();
      return TestDialog::OnInitDialog();
    }
  };
  ThreadDialog dialog;
  std::atomic<bool> done{false};
  int result = 0;
  std::thread worker([&] {
    result = dialog.DoModal();  // no script: the dialog is cancelled as when the script has ended
    done = true;
  });
  while (!done) {
    host::ui::runPendingUiCalls();
    std::this_thread::yield();
  }
  worker.join();
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_EQ(dialog.initThread, std::this_thread::get_id());
  EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}

TEST_F(UiTest, FailureOfAWorkersMessageBoxStopsTheUiThreadAndReleasesTheWorker) {
  run("@answer message retry");
  std::atomic<bool> done{false};
  int answer = 0;
  std::thread worker([&] {
    answer = AfxMessageBox(L"Neue Version verfügbar", MB_YESNO);
    done = true;
  });
  bool failed = false;
  while (!done) {
    try {
      host::ui::runPendingUiCalls();
    } catch (const ScriptError&) {
      failed = true;
    }
    std::this_thread::yield();
  }
  worker.join();
  EXPECT_TRUE(failed);
  EXPECT_EQ(answer, IDCANCEL);
}

// What a module's worker does in the two tests below: waits a little, then asks the UI thread for something.
struct WorkerJob {
  std::function<void()> work;
};
unsigned RunJob(void* job) {
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  static_cast<WorkerJob*>(job)->work();
  return 1;
}

TEST_F(UiTest, WaitForIdleRunsTheWorkersCallsUntilTheWorkersHaveEnded) {
  EXPECT_TRUE(host::headless::isUiScriptLine("@wait idle"));
  EXPECT_EQ(fail("@wait"), "@wait needs dialog or idle: @wait dialog ID [MS], @wait idle [MS]");
  EXPECT_EQ(fail("@wait idle soon"), "\"soon\" is not a number: @wait idle [MS]");
  run("@wait idle 10");  // nothing runs: over at once, and running out of time is no error either

  run("@answer message yes");
  int answer = 0;
  WorkerJob job{[&] { answer = AfxMessageBox(L"Neue Version", MB_YESNO); }};
  ASSERT_TRUE(AfxBeginThread(&RunJob, &job));
  EXPECT_EQ(host::ui::runningWorkerThreads(), 1);
  EXPECT_EQ(transcriptOf([] { run("@wait idle 5000"); }), "[message] \"Neue Version\" (yes/no) -> yes\n");
  EXPECT_EQ(answer, IDYES);
  EXPECT_EQ(host::ui::runningWorkerThreads(), 0);
}

TEST_F(UiTest, WaitForADialogEndsWhenAWorkerHasOpenedIt) {
  EXPECT_EQ(fail("@wait dialog 900 20"), "no dialog 900 opened within 20 ms");
  TestDialog dialog;
  WorkerJob job{[&] { dialog.Create(kDialog); }};
  ASSERT_TRUE(AfxBeginThread(&RunJob, &job));
  run("@wait dialog 900");
  EXPECT_NE(dialog.GetSafeHwnd(), nullptr);
  run("@wait idle");
  EXPECT_EQ(host::ui::runningWorkerThreads(), 0);
}

}  // namespace
}  // namespace uitest
