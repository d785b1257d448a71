// The page that is shown without a recording: open commands, recent files and the documents of the user manual. It
// borrows the actions and follows their changes.
#pragma once

#include <QWidget>
#include <vector>

class QAction;
class QLabel;
class QPushButton;
class QVBoxLayout;
class TFlowLayout;

class TWellcomePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TWellcomePanel(QWidget* parent);

  // The large buttons, from left to right.
  QPushButton* AddButton(QAction* action, const QString& buttonName);
  // False where the first button is disabled.
  bool FocusFirst();
  // A section below the buttons and above the sections added before; takes the widget. Hiding the widget hides its
  // heading.
  void AddSection(const QString& heading, QWidget* content);
  // Opens a document with the desktop's program for it. The manual's section appears with its first icon.
  QWidget* AddUserManualIcon(const QString& objectName, const QString& caption, const QString& filePath);

 signals:
  // The document is missing, or the desktop has no program for it.
  void OpenFailed(const QString& filePath);

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct TGesture {
    QLabel* Picture;
    const char* IconName;
  };
  struct TSection {
    QLabel* Heading;
    QWidget* Content;
  };
  QWidget* MakeGestures();
  void TakeLook();

  QWidget* FPage;
  QVBoxLayout* FColumn;
  QLabel* FName;
  TFlowLayout* FButtons;
  QWidget* FManual;
  TFlowLayout* FManualIcons;
  std::vector<TGesture> FGestures;
  std::vector<TSection> FSections;
};
