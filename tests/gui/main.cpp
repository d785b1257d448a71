// Windows are tested without a display.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

#include "gui/common/uTheme.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // A test answers the toolkit's own dialogs only.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication application(argc, argv);
  QFont font = QApplication::font();
  font.setFamily("DejaVu Sans");  // so that widths are the same on every machine
  QApplication::setFont(font);
  ApplyScheme(application, TScheme::Light);
  return RUN_ALL_TESTS();
}
