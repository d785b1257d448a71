// The desktop's dialogs. Enter accepts, Esc cancels.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "shell/uIDialogs.h"

class TDialogs final : public IDialogs {
 public:
  explicit TDialogs(QWidget& window) : FWindow(window) {}

  [[nodiscard]] std::optional<std::string> AskForRecording(const TOpenDialog& dialog) override;
  [[nodiscard]] std::optional<std::string> AskForFolder(std::string_view title, const std::string& folder) override;
  [[nodiscard]] std::optional<TSaveChoice> AskWhereToSave(const TSaveDialog& dialog) override;
  void ShowMessage(std::string_view text, std::string_view details) override;
  void ShowInformation(std::string_view text) override;
  [[nodiscard]] bool Confirm(std::string_view question) override;

 private:
  QWidget& FWindow;
};

// A file to open; nothing when the user cancels.
std::optional<std::string> AskForFile(QWidget* parent, const QString& title, const TOpenDialog& dialog);
