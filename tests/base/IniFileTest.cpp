#include "base/uIniFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/uTestRecording.h"

using testing::ElementsAre;

namespace {

class IniFile : public testing::Test {
 protected:
  void Write(const std::string& text) { std::ofstream(FPath, std::ios::binary) << text; }
  std::string Text() {
    std::ifstream file(FPath);  // lines end as the system ends them
    return {std::istreambuf_iterator<char>(file), {}};
  }

  TTempFolder FFolder;
  std::filesystem::path FPath = FFolder / "a.ini";
};

TEST_F(IniFile, TypedReadsFallBackToTheirDefaults) {
  Write(
      "\xEF\xBB\xBF[S]\r\nI=7\nJ = 7x\nK=\nL=99999999999\nF=-2.5e3\nG=1,5\nN=nan\nM=inf\nP=+4\nOn=-1\nOff=0\nYes=yes\n"
      "T = a b \nPM=+-4\n");
  const TIniFile ini = TIniFile::Load(FPath);
  EXPECT_EQ(ini.ReadInteger("s", "i", 1), 7);
  for (const char* key : {"J", "K", "L", "F", "none"}) EXPECT_EQ(ini.ReadInteger("S", key, 1), 1) << key;
  EXPECT_EQ(ini.ReadFloat("S", "F", 1), -2500);
  EXPECT_EQ(ini.ReadFloat("S", "P", 1), 4);
  for (const char* key : {"G", "N", "M", "K", "PM", "none"}) EXPECT_EQ(ini.ReadFloat("S", key, 1), 1) << key;
  for (const bool def : {false, true}) {
    EXPECT_TRUE(ini.ReadBool("S", "On", def));
    EXPECT_FALSE(ini.ReadBool("S", "Off", def));
    EXPECT_EQ(ini.ReadBool("S", "Yes", def), def);
    EXPECT_EQ(ini.ReadBool("Other", "On", def), def);
  }
  EXPECT_EQ(ini.ReadString("S", "T", "x"), "a b");
  EXPECT_EQ(ini.ReadString("S", "K", "x"), "");
}

TEST_F(IniFile, AStrictReadNamesTheLineThatMeansNothing) {
  Write("\xEF\xBB\xBF; note\r\n\r\n[S]\r\n a = 1 = 2 \r\n# note\r\n[ T ]\r\nA=[x]\r\n");
  EXPECT_THAT(TIniFile::LoadStrict(FPath).Sections(), ElementsAre("S", "T"));
  const std::string longLine = "[S]\n\na=" + std::string(4000, 'x');
  for (const char* text :
       {"[S]\na=1\nb 2\n", "[S]\na=1\n[T\n", "[S]\na=1\n=2\n", "[S]\na=1\n[T] b=2\n", "[S]\n\nb=1\rc=2\n",
        "[S]\na=1\nA = 1\n", "[S]\n;\n[]\n", "\n\na=1\n[S]\n", longLine.c_str()}) {
    Write(text);
    try {
      TIniFile::LoadStrict(FPath);
      ADD_FAILURE() << text;
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr("Line 3 ")) << text;
    }
  }
}

TEST_F(IniFile, WrittenValuesReadBackAndTheRestStaysInPlace) {
  Write("; note\n[Theirs]\nQ = \"x\"\nZ = 1\n\n[S]\nold = 1\n");
  TIniFile ini = TIniFile::Load(FPath);
  const std::string texts[] = {"",     "plain",  " both ends ", "\"quoted\"", "\"",
                               "\"\"", "half\"", "a=b;c#d [e]", "ü…",         "<<<END"};
  for (const std::string& text : texts) {
    ini.WriteString("S", "T", text);
    ini.WriteFloat("S", "F", 0.1);
    Write(ini.Text());
    ini = TIniFile::Load(FPath);
    EXPECT_EQ(ini.ReadString("S", "T", "none"), text);
    EXPECT_EQ(ini.ReadFloat("S", "F", 0), 0.1);
  }
  EXPECT_THAT(ini.Keys("S"), ElementsAre("old", "T", "F"));
  ini.WriteString("S", "old", "two\nlines");
  EXPECT_EQ(ini.ReadString("S", "old", ""), "two lines");
  Write(ini.Text());
  EXPECT_THAT(Text(), testing::StartsWith("; note"));
  EXPECT_THAT(Text(), testing::HasSubstr("Q = \"x\"\nZ = 1\n"));
}

TEST_F(IniFile, TextThatIsNotUtf8IsWindows1252) {
  Write("[S]\nT = M\xFCller \x80\n");
  EXPECT_EQ(TIniFile::Load(FPath).ReadString("S", "T", ""), "Müller €");
  // Characters of two, three and four bytes, the one for what is malformed among them.
  for (const char* utf8 : {"Müller", "€ \uFFFD", "\U0001F600", "\U0010FFFF"}) {
    Write(std::string("[S]\nT = ") + utf8);
    EXPECT_EQ(TIniFile::Load(FPath).ReadString("S", "T", ""), utf8);
  }
  // A character cut short, a surrogate, a character past the last.
  const std::pair<const char*, const char*> cases[] = {
      {"\xC3", "Ã"}, {"\xED\xA0\x80", "í\u00A0€"}, {"\xF4\x90\x80\x80", "ô\u0090€€"}};
  for (const auto& [bytes, text] : cases) {
    Write(std::string("[S]\nT = ") + bytes);
    EXPECT_EQ(TIniFile::Load(FPath).ReadString("S", "T", ""), text);
  }
}

TEST_F(IniFile, InvalidLinesAreSkippedAndUnreadableFilesThrow) {
  std::string rubbish(5000, 'x');
  for (std::size_t i = 0; i < rubbish.size(); ++i) rubbish[i] = static_cast<char>((i * 7919 >> 3) | 1);
  Write(rubbish);
  EXPECT_EQ(TIniFile::Load(FPath).ReadInteger("S", "I", 3), 3);
  rubbish[4000] = '\0';
  Write(rubbish);
  EXPECT_THROW(TIniFile::Load(FPath), std::runtime_error);
  Write(std::string(1'000'001, 'x'));
  EXPECT_THROW(TIniFile::Load(FPath), std::runtime_error);
  EXPECT_THROW(TIniFile::Load(FFolder.Path()), std::runtime_error);
  EXPECT_THROW(TIniFile::Load(FFolder / "none.ini"), std::runtime_error);
}

}  // namespace
