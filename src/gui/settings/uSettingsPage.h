// The pages of the settings: general, formats, colours, analog inputs. It only makes the controls, by their fixed
// names; TSettingsBinder connects them.
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
