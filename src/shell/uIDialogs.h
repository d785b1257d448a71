// The dialogs of the window. Each returns when the user has answered. Main thread only; text is UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct TOpenDialog {
  std::string folder;       // empty: the system's choice
  std::string_view filter;  // "name|patterns|name|patterns", patterns separated by ";"
  int filterIndex = 1;      // counted from 1
};

struct TSaveDialog {
  std::string_view title;
  std::string folder;
  std::string name;            // without extension
  std::string_view filter;     // as in TOpenDialog; the first entry is chosen
  std::string_view extension;  // without dot, for a name that has none
  bool replaces = false;       // an existing file may be chosen without a question
};

struct TSaveChoice {
  std::string file;
  int filterIndex = 1;  // counted from 1
};

class IDialogs {
 public:
  virtual ~IDialogs() = default;

  // Nothing when the user cancels.
  [[nodiscard]] virtual std::optional<std::string> AskForRecording(const TOpenDialog& dialog) = 0;
  [[nodiscard]] virtual std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) = 0;
  [[nodiscard]] virtual std::optional<TSaveChoice> AskWhereToSave(const TSaveDialog& dialog) = 0;
  // A warning: `text` is what happened, `details` the file and what to do.
  virtual void ShowMessage(std::string_view text, std::string_view details) = 0;
  virtual void ShowInformation(std::string_view text) = 0;
  // A question with OK and Cancel; true for OK.
  [[nodiscard]] virtual bool Confirm(std::string_view question) = 0;
};
