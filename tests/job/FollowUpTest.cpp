// What leaves a job: page numbers in names, the status file, follow-up programs, the document shown.
#include <gtest/gtest.h>

#include "host/CodePage.h"
#include "job/Delivery.h"
#include "job/FollowUp.h"
#include "job/PageNumbers.h"
#include "job/StatusFile.h"
#include "system/Error.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

/// "number description" of what `action` raises.
template <class Action>
std::string Raised(Action action) {
  try {
    action();
    return "";
  } catch (const Error& error) {
    return std::to_string(error.number()) + " " + error.description();
  }
}

TEST(PageNumbers, TakeThePlaceOfTags) {
  struct Case {
    const char* text;
    std::int32_t page;
    const char* result;
  };
  for (const Case& c : {Case{"a.png", 7, "a.png"},
                        {"<pageno>", 7, "7"},
                        {"a<pageno>b<PageNo,2>", 2, "a2b02"},
                        {"<pageno,3>", 7, "007"},
                        {"<PAGENO , 3 , _x>", 7, "__7"},
                        {"<pageno,3,ü>", 7, "üü7"},
                        {"<pageno,3,>", 7, "  7"},
                        {"<pageno,2>", 123, "123"},
                        {"<pageno,,x>", 7, "7"},
                        {"<pageno,-3>", 7, "7"},
                        {"<pageno,2.6 cm>", 7, "007"},
                        {"<pageno,00003>", 7, "7"},
                        {"<pageno,&h3>", 7, "007"},
                        {"<pagenumber,3>", 7, "007"},
                        {"x<pageno, y", 7, "x<pageno, y"},
                        {"<pageno,3,<>", 7, "<<7"}})
    EXPECT_EQ(SubstitutePageNo(c.text, c.page), c.result) << c.text;

  std::string tags;
  for (int i = 0; i < 101; ++i) tags += "<pageno>";
  EXPECT_EQ(SubstitutePageNo(tags, 1), std::string(100, '1') + "<pageno>");
  EXPECT_EQ(SubstitutePageNo("<pageno,9999>", 5).size(), 9999u);
  EXPECT_EQ(Raised([] { SubstitutePageNo("<pageno,9e99>", 5); }),
            "1013 Error in page no substitution '<pageno,9e99>' page no 5. Error 6: Overflow");
}

struct FollowUpTest : testing::Test {
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_F(FollowUpTest, TheStatusFileHoldsUnitsOf16Bits) {
  const Settings config = NewDictionary();
  config->Set("statusfile", R"( D:\status.txt )");
  config->Set("title", "Grüße 😀 \xFF");
  const auto written = [&](bool success, const char* files) {
    WriteStatusFile(run, success, config, 12, 2, files);
    return machine.files.Text(R"(D:\status.txt)");
  };
  const std::string bytes = written(true, "  File1=C:\\a.png\r\n  File2=C:\\b.png");
  ASSERT_EQ(bytes.size() % 2, 0u);
  std::u16string units;
  for (std::size_t i = 0; i < bytes.size(); i += 2)
    units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                   static_cast<unsigned char>(bytes[i + 1]) << 8);
  EXPECT_EQ(units,
            u"[Status]\r\n  Errors=0\r\n  PageCount=12\r\n  FileCount=2\r\n\r\n"
            u"[Files]\r\n  File1=C:\\a.png\r\n  File2=C:\\b.png\r\n\r\n"
            u"[PDF Printer]\r\n  statusfile= D:\\status.txt \r\n  title=Grüße \xD83D\xDE00 \xFFFD\r\n");
  const std::string failed = written(false, "");
  EXPECT_EQ(failed.substr(0, 80).find(std::string("E\0r\0r\0o\0r\0s\0=\0001\0", 16)), 24u) << failed;
  EXPECT_NE(failed.find(std::string("]\0\r\0\n\0\r\0\n\0\r\0\n\0[\0P\0", 18)), std::string::npos);
}

TEST_F(FollowUpTest, AStatusFileThatCannotBeWrittenIsAnError) {
  const Settings config = NewDictionary();
  WriteStatusFile(run, true, config, 1, 1, "");
  config->Set("statusfile", R"(D:\none\status.txt)");
  EXPECT_EQ(Raised([&] { WriteStatusFile(run, true, config, 1, 1, ""); }),
            R"(76 Error writing status file 'D:\none\status.txt'. Error 76: Path not found)");
}

TEST_F(FollowUpTest, ProgramsAreStartedByTheCommandInterpreter) {
  machine.processes.Expect(R"(cmd /c notepad "C:\a b\c.pdf")").NeverEnds();
  machine.processes.Expect(R"(cmd /c %0 3 2 C:\50%.pdf0 C:\50%.pdf)");
  machine.files.PutFolder(R"(C:\a b)");
  RunProgram(run, R"(notepad "%1")", "", R"(C:\a b\c.pdf)", 3, 1);
  RunProgram(run, "%0 %2 %3 %10 %1", R"(C:\a b)", R"(C:\50%.pdf)", 3, 2);
  ASSERT_EQ(machine.processes.started.size(), 2u);
  EXPECT_EQ(machine.processes.started[0].folder, machine.host().workingFolder);
  EXPECT_EQ(machine.processes.started[1].folder, R"(C:\a b)");
  EXPECT_EQ(machine.clock.Ticks(), 0) << "nobody waits";

  machine.processes.Expect("cmd /c none").FailsToStart();
  EXPECT_EQ(Raised([&] { RunProgram(run, "none", "", "", 0, 0); }),
            "1000 Error launching the command [cmd /c none]");
}

TEST_F(FollowUpTest, ADocumentThatIsNotShownIsTold) {
  run.job.SuppressErrors = true;
  EXPECT_TRUE(ShowDocument(run, R"(C:\a.pdf)"));
  EXPECT_TRUE(machine.desktop.boxes.empty());
  const std::string reader =
      "The printer was unable to open the PDF document.\r\n\r\nMake sure you have a PDF document reader "
      "installed on your computer.\r\n\r\nFree PDF readers are available from several vendors on the web.";
  const std::string extension =
      "The program was unable to show the document. The extension of your document file name should be PDF. "
      "Please change that and try again.\r\n\r\nFile name: C:\\a.png";
  struct Case {
    const char* file;
    std::int32_t result;
    std::string text;
  };
  for (const Case& c :
       {Case{R"(C:\a.PDF)", 31, reader},
        {R"(C:\a.png)", 31, extension},
        {R"(C:\a.pdf)", 2,
         "Error opening the PDF Document.\r\n\r\nThe system cannot find the file specified."
         "\r\n\r\nError 2"},
        {R"(C:\a.pdf)", 32, "Error opening the PDF Document.\r\n\r\nError 32.\r\n\r\nError 32"}}) {
    machine.shell.openResult = c.result;
    EXPECT_TRUE(ShowDocument(run, c.file));
    EXPECT_EQ(machine.desktop.boxes.back().text, c.text);
    EXPECT_EQ(machine.desktop.boxes.back().flags, 48);
  }
}

TEST_F(FollowUpTest, PagesAreDeliveredUpToTheFirstThatIsMissing) {
  const auto deliver = [this](const char* output) {
    const Delivery delivery = DeliverPages(run, R"(C:\Temp\x_page)", "png", output);
    return std::to_string(delivery.failed) + std::to_string(delivery.fileCount) + delivery.fileList;
  };
  run.job.SuppressErrors = true;
  EXPECT_EQ(deliver(R"(D:\a<pageno>.png)"), "00") << "no page at all";
  for (const char* page : {"1", "2", "4"})
    machine.files.Put(std::string(R"(C:\Temp\x_page_0000000)") + page + ".png", page);
  EXPECT_EQ(deliver(R"(D:\a<pageno,3>.png)"), "02  File1=D:\\a001.png\r\n  File2=D:\\a002.png");
  EXPECT_EQ(machine.files.Text(R"(D:\a002.png)"), "2");
  machine.files.Hold(R"(D:\b2.png)");
  EXPECT_EQ(deliver(R"(D:\b<pageno>.png)"), R"(11  File1=D:\b1.png)");
  EXPECT_EQ(machine.clock.Ticks() / 1000, 10);

  machine.files.PutFolder(R"(D:\folder)");
  const Delivery delivery = DeliverFile(run, R"(C:\Temp\x_page_00000001.png)", R"(D:\folder)");
  EXPECT_TRUE(delivery.failed);
  EXPECT_EQ(delivery.fileList, R"(  File1=D:\folder)");
  EXPECT_EQ(machine.clock.Ticks() / 1000, 10) << "a folder will be no file in ten seconds";
}

}  // namespace
}  // namespace tessary
