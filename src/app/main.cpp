// shockscope: the window, pictures of it, or a report without it.
#include <QRegularExpression>
#include <QSize>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/uFiles.h"
#include "gui/common/uGuard.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uSnapshots.h"
#include "gui/platform/uDesktopScheme.h"
#include "gui/report/uReportRun.h"
#include "platform/uMachineMemory.h"
#include "platform/uProcessLimits.h"
#include "platform/uProgram.h"
#include "platform/uTerminal.h"
#include "platform/uUserFolders.h"

namespace {

constexpr int kFailure = 1;
constexpr int kWrongUse = 2;

constexpr auto kUsage =
    "usage: shockscope [--scheme light|dark] [FILE]\n"
    "       shockscope --snapshot DIR FILE [--scheme light|dark] [--size WxH] [--scale 1|1.5|2]\n"
    "       shockscope --report OUT.pdf FILE [--config FILE.ini] [--limits FILE.ini]\n"
    "       shockscope --version | --help\n"
    "\n"
    "Shows a recording. With --snapshot it shows none: it saves pictures of every view of FILE in DIR, of a\n"
    "window of that size and scale; it is 1280x800 unless told, and at least 900x600. With --report it writes the\n"
    "report of FILE as PDF, with your settings and logos, as the configuration file says and by the limits of the\n"
    "other file; it ends as kshock does: 0 done, 1 not displayable, 3 not readable, 4 not writable, 5 damaged.\n";

struct TArguments {
  std::string file;
  std::optional<std::string> snapshotFolder;
  std::optional<std::string> reportFile;
  std::optional<std::string> reportConfig, reportLimits;
  QSize size;         // of the window in the pictures; invalid: as designed
  std::string scale;  // of the pictures; empty: the desktop's
  TScheme scheme = TScheme::Desktop;
  bool version = false;
  bool help = false;
  bool wrong = false;

  [[nodiscard]] bool ShowsWindow() const { return !wrong && !help && !version && !snapshotFolder && !reportFile; }
};

// Invalid for a text that is not a width and a height of up to four digits, or for less than the window takes.
QSize SizeOf(const std::string& text) {
  static const QRegularExpression form("^(\\d{1,4})x(\\d{1,4})$");
  const auto match = form.match(QtText(text));
  const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
  return size.width() >= 900 && size.height() >= 600 ? size : QSize();
}

// What follows --report: nothing is left over, because a misspelt option would change what the report says.
void ParseReport(std::span<const std::string> words, TArguments& arguments) {
  arguments.wrong = words.size() < 2 || words.size() % 2 != 0 || words[0].empty();
  if (arguments.wrong) return;
  arguments.reportFile = words[0];
  arguments.file = words[1];
  for (std::size_t i = 2; i < words.size(); i += 2) {
    if (words[i] == "--config") {
      arguments.reportConfig = words[i + 1];
    } else if (words[i] == "--limits") {
      arguments.reportLimits = words[i + 1];
    } else {
      arguments.wrong = true;
    }
  }
}

// Only an argument that is exactly an option is one; the first other is the recording, and what follows it is ignored.
TArguments Parse(const std::vector<std::string>& words) {
  TArguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::size_t left = words.size() - i - 1;
    if (words[i] == "--version") {
      arguments.version = true;
    } else if (words[i] == "--help") {
      arguments.help = true;
    } else if (words[i] == "--scheme") {
      const std::string scheme = left >= 1 ? words[++i] : std::string();
      arguments.wrong = arguments.wrong || (scheme != "light" && scheme != "dark");
      arguments.scheme = scheme == "dark" ? TScheme::Dark : TScheme::Light;
    } else if (words[i] == "--size") {
      arguments.size = SizeOf(left >= 1 ? words[++i] : std::string());
      arguments.wrong = arguments.wrong || arguments.size.isEmpty();
    } else if (words[i] == "--scale") {
      arguments.scale = left >= 1 ? words[++i] : std::string();
      constexpr std::string_view kScales[] = {"1", "1.5", "2"};
      arguments.wrong = arguments.wrong || !std::ranges::count(kScales, arguments.scale);
    } else if (words[i] == "--snapshot") {
      if (left < 2) {
        arguments.wrong = true;
        return arguments;
      }
      arguments.snapshotFolder = words[++i];
      arguments.file = words[++i];
      arguments.wrong = arguments.wrong || arguments.snapshotFolder->empty();
    } else if (words[i] == "--report") {
      ParseReport(std::span(words).subspan(i + 1), arguments);
      return arguments;
    } else {
      if (!arguments.snapshotFolder) arguments.file = words[i];
      break;
    }
  }
  const bool ofPictures = arguments.size.isValid() || !arguments.scale.empty();
  arguments.wrong = arguments.wrong || (ofPictures && !arguments.snapshotFolder);
  return arguments;
}

int Run(const TArguments& arguments, const char* programName) {
  const bool takesPictures = arguments.snapshotFolder.has_value();
  if ((takesPictures || arguments.reportFile) && kPlatformForPictures != nullptr) {
    qputenv("QT_QPA_PLATFORM", kPlatformForPictures);
    // That platform warns about every window.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
      if (type != QtDebugMsg && type != QtWarningMsg) std::fprintf(stderr, "shockscope: %s\n", Utf8(text).c_str());
    });
  } else if (!HasDisplay()) {
    std::fputs("shockscope: there is no display; --snapshot and --report need none\n", stderr);
    return kFailure;
  }
  if (!arguments.scale.empty()) qputenv("QT_SCALE_FACTOR", arguments.scale.c_str());
  // Qt must not read the program's arguments.
  int count = 1;
  std::string name = programName;
  char* values[] = {name.data(), nullptr};
  TGuardedApplication application(count, values);
  if (arguments.reportFile) {
    return RunReport({arguments.file, *arguments.reportFile, arguments.reportConfig, arguments.reportLimits,
                      SettingsFolderPath(), ProgramFileVersion()});
  }
  ApplyScheme(application, arguments.scheme);
  if (arguments.scheme == TScheme::Desktop && !takesPictures) FollowDesktopScheme(application);
  TProgram program;
  program.folder = PathFromUtf8(Utf8(QCoreApplication::applicationDirPath()));
  program.version = ProgramFileVersion();
  // Pictures do not depend on the user's settings.
  if (!takesPictures) {
    program.firstArgument = arguments.file;
    program.dataFolder = RegistryFileDir();
    program.findSettingsFolder = SettingsFolder;
  }
  TKorvexMainForm form(std::move(program), MissionMemoryBytes);
  if (takesPictures) {
    if (arguments.size.isValid()) form.resize(arguments.size);
    for (const QString& file : SaveSnapshots(form, QtText(arguments.file), QtText(*arguments.snapshotFolder))) {
      std::printf("%s\n", Utf8(file).c_str());
    }
    return 0;
  }
  form.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  SurviveFileSizeLimit();
  RaiseOpenFileLimit();
  TakeMemoryInLargeSteps();
  UseUtf8Streams();
  try {
    const TArguments arguments = Parse(ProgramArguments(argc, argv));
    if (!arguments.ShowsWindow()) UseStartersConsole();
    if (arguments.wrong || arguments.help) {
      std::fputs(kUsage, arguments.wrong ? stderr : stdout);
      return arguments.wrong ? kWrongUse : 0;
    }
    if (arguments.version) {
      std::puts(("ShockScope " + ProgramFileVersion()).c_str());
      return 0;
    }
    return Run(arguments, argv[0]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "shockscope: %s\n", error.what());
    return kFailure;
  }
}
