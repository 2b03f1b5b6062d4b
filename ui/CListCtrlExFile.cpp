// Writing a list as separated values, for the spreadsheet and for other survey software.
#include <clocale>
#include <cstdio>
#include <string>

#include "sdk/AcEd.h"
#include "support/KoConvert.h"
#include "support/KoProcess.h"
#include "support/KoSettings.h"
#include "ui/CListCtrlEx.h"

namespace {

// The separator holds at most 8 characters, as the system's locale answer does.
constexpr std::size_t kSeparatorCapacity = 8;
constexpr const char* kSpreadsheetSetting = "Spreadsheet";
constexpr const char* kDefaultSpreadsheet = "libreoffice --calc";
constexpr const wchar_t* kSpreadsheetFile = L"/Viracadtools.csv";

// Switches the C library to the user's locale for as long as it lives, so that the numbers in the cells come
// out with the decimal mark the user's spreadsheet reads; the previous locale comes back afterwards.
class UserLocale {
 public:
  UserLocale() {
    const char* current = std::setlocale(LC_ALL, nullptr);
    if (current != nullptr) m_previous = current;
    std::setlocale(LC_ALL, "");
  }
  ~UserLocale() {
    if (!m_previous.empty()) std::setlocale(LC_ALL, m_previous.c_str());
  }
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;

 private:
  std::string m_previous;
};

// The narrow form of a text for the file; a text that cannot be converted is written empty.
void writeText(std::FILE* file, const std::wstring& text) {
  const UniToAnsi narrow(text);
  std::fputs(narrow.c_str(), file);
}

}  // namespace

CCSVListSeperator::CCSVListSeperator() : m_separator(KoListSeparator()) {
  if (m_separator.empty()) m_separator = L";";
  if (m_separator.size() > kSeparatorCapacity) m_separator.resize(kSeparatorCapacity);
}

bool CListCtrlEx::WriteSeparatedFile(const std::wstring& path, bool withHeader, bool openInSpreadsheet) {
  const CCSVListSeperator separator;
  if (!WriteTable(path, separator.Get(), withHeader)) return false;
  if (openInSpreadsheet) OpenInSpreadsheet(path);
  return true;
}

bool CListCtrlEx::WriteSeparatedFile(const std::wstring& path, const std::wstring& separator) {
  return WriteTable(path, separator, true);
}

bool CListCtrlEx::WriteTable(const std::wstring& path, const std::wstring& separator, bool withHeader) {
  std::FILE* file = std::fopen(KoWideToUtf8(path).c_str(), "w");
  if (file == nullptr) return false;
  bool written = true;
  {
    const UserLocale locale;
    const int columns = GetColumnCount();
    if (withHeader) {
      for (int column = 0; column < columns; ++column) {
        std::wstring text;
        int alignment = 0;
        int width = 0;
        if (!GetColumnHeader(text, alignment, width, column)) continue;
        writeText(file, text + separator);
      }
      std::fputs("\n", file);
    }
    wchar_t buffer[kCellBufferLength + 1];
    for (int row = 0; row < RowCount(); ++row) {
      for (int column = 0; column < columns; ++column) {
        buffer[0] = L'\0';
        // A cell without text leaves no field at all: the fields after it move one to the left.
        if (!GetCellText(buffer, kCellBufferLength, RowData(row), row, column)) continue;
        buffer[kCellBufferLength] = L'\0';
        const std::wstring text = buffer;
        if (!text.empty() && text.front() == L'@') {
          if (text == kCheckMarker) writeText(file, (GetCheckState(row, column, 0) ? L"1" : L"0") + separator);
          continue;
        }
        writeText(file, text + separator);
      }
      std::fputs("\n", file);
    }
    written = std::ferror(file) == 0;
  }
  if (std::fclose(file) != 0) written = false;
  return written;
}

void CListCtrlEx::ExportToSpreadsheet() {
  const std::wstring path = KoUtf8ToWide(KoTemporaryDirectory()) + kSpreadsheetFile;
  WriteSeparatedFile(path, true, true);
}

void CListCtrlEx::OpenInSpreadsheet(const std::wstring& path) {
  const std::string command = KoReadSetting(kKoPlatformSection, kSpreadsheetSetting).value_or(kDefaultSpreadsheet);
  std::vector<std::string> argv = KoSplitCommand(command);
  if (argv.empty()) argv = KoSplitCommand(kDefaultSpreadsheet);
  argv.push_back(KoWideToUtf8(path));
  std::string error;
  if (KoStartProgram(argv, error)) return;
  const std::wstring line =
      (LanguageIsGerman() ? L"\nDas Programm \"" : L"\nCannot start the program \"") + KoUtf8ToWide(argv.front()) +
      (LanguageIsGerman() ? L"\" kann nicht gestartet werden: " : L"\": ") + KoUtf8ToWide(error) + L"\n";
  acutPrintf(L"%s", line.c_str());
}
