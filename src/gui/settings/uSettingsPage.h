// The pages of the settings, one below another's tab: general, formats, colours, analog inputs. Each setting is a
// control with a fixed name; what a change does is not decided here.
#pragma once

#include <QTabWidget>

class TLogos;

class TSettingsPage : public QTabWidget {
  Q_OBJECT

 public:
  explicit TSettingsPage(TLogos& logos);

 private:
  QWidget* MakeGeneral(TLogos& logos);
  QWidget* MakeFormats();
  QWidget* MakeColours();
  QWidget* MakeAnalogInputs();
};
