// The whole window as a person uses it: through the names of its controls, with whatever asks answered.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "gui/mainform/KorvexMainForm.h"
#include "tests/support/uTestRecording.h"

inline constexpr int kPatienceMs = 60000;

class TWindowTest : public testing::Test {
 protected:
  TWindowTest() {
    FProgram.folder = FFolder.Path();
    FProgram.version = "1.2.3.4";
    FProgram.dataFolder = FFolder.Path().string();
    QObject::connect(&FWatch, &QTimer::timeout, [this] { Answer(QApplication::activeModalWidget()); });
    FWatch.start(10);
  }

  // A control that the window lacks, and anything else that a handler throws, ends in such a box.
  void TearDown() override { EXPECT_THAT(FBoxes, testing::Each(testing::Not(testing::StartsWith("msgFailure")))); }

  void Answer(QWidget* dialog) {
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
      FBoxes.push_back((box->objectName() + "|" + box->text() + "|" + box->informativeText()).toStdString());
      for (const QLabel* label : box->findChildren<QLabel*>()) {
        EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
      }
      QTest::keyClick(box, Qt::Key_Escape);
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
      auto* name = files->findChild<QLineEdit*>("fileNameEdit");
      const QStringList told = {files->objectName(), files->windowTitle(), files->directory().absolutePath(),
                                files->selectedNameFilter(), name->text()};
      FDialogs.push_back(told.join('|').toStdString());
      if (!FFileType.isEmpty()) files->selectNameFilter(FFileType);
      name->setText(FTyped);
      QTest::keyClick(name, FTyped.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    }
  }

  QString Save(const char* name, const TBytes& stream) {
    WriteFile(FFolder / name, stream);
    return QString::fromStdString((FFolder / name).string());
  }
  QString Save(const char* name, const TTestRecording& recording) { return Save(name, Deflated(recording.content)); }

  void Start(const QString& argument = {}) {
    FProgram.firstArgument = argument.toStdString();
    FForm = std::make_unique<TKorvexMainForm>(FProgram, [] { return TReadFileThread::kNoMemoryBound; });
    if (FSize.isValid()) FForm->resize(FSize);
    FForm->show();
    // What the window does once it stands comes before this.
    bool stands = false;
    QMetaObject::invokeMethod(
        FForm.get(), [&stands] { stands = true; }, Qt::QueuedConnection);
    ASSERT_TRUE(QTest::qWaitFor([&stands] { return stands; }, kPatienceMs));
    Settle();
    if (FBoxes.empty()) Activate();  // else a box is in front
  }
  void Settle() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !FForm->Flow().Busy(); }, kPatienceMs));
    for (int round = 0; round < 8; ++round) {
      QCoreApplication::sendPostedEvents();  // Windows' loop may leave them for a later round
      QCoreApplication::processEvents();
    }
  }
  void Activate() {
    FForm->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(FForm.get()));
  }
  void Press(const char* keys) {
    Activate();  // a dialog may have been in front
    QTest::keySequence(FForm.get(), QKeySequence(keys));
    Settle();
  }
  // Presses a key that opens a dialog, does something in it, and closes it unless that did.
  void InDialog(const char* keys, const std::function<void(QDialog&)>& work) {
    bool wasOpen = false;
    QTimer::singleShot(200, FForm.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      wasOpen = true;
      work(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    Press(keys);
    EXPECT_TRUE(QTest::qWaitFor([&] { return wasOpen; }, kPatienceMs)) << keys;
  }
  // In place of what stands there.
  void Type(const char* edit, const QString& text) {
    auto* line = Find<QLineEdit>(edit);
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
  }
  template <class T = QWidget>
  T* Find(const std::string& name) {
    T* found = FForm->findChild<T*>(QString::fromStdString(name));
    if (found == nullptr) throw std::runtime_error("there is no " + name);
    return found;
  }
  // Of the named controls, those in sight.
  std::vector<std::string> Seen(const std::vector<std::string>& names) {
    std::vector<std::string> seen;
    std::ranges::copy_if(names, std::back_inserter(seen), [this](const auto& name) { return Find(name)->isVisible(); });
    return seen;
  }
  // Of the named controls, those that nobody hid; a group may stand on a tab, a panel behind another.
  std::vector<std::string> Shown(const std::vector<std::string>& names) {
    std::vector<std::string> shown;
    std::ranges::copy_if(names, std::back_inserter(shown),
                         [this](const auto& name) { return !Find(name)->isHidden(); });
    return shown;
  }
  std::vector<std::string> Docks() {
    return Shown({"dxDockPanelNavigator", "dxDockPanelMissionDetails", "dxDockPanelSensorGridTemp",
                  "dxDockPanelSensorGridBattery"});
  }

  TTempFolder FFolder;
  TProgram FProgram;
  QSize FSize;                        // of the window at its start; invalid: its own
  QString FTyped;                     // into a file dialog; nothing cancels it
  QString FFileType;                  // chosen in a file dialog; nothing leaves it as it is
  std::vector<std::string> FDialogs;  // name, title, folder, filter and proposed name of each that was answered
  std::vector<std::string> FBoxes;    // name, text and details of each that was answered
  QTimer FWatch;
  std::unique_ptr<TKorvexMainForm> FForm;
};
