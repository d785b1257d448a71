// The report view: a live preview of the pages, as they will be printed.
#pragma once

#include <QWidget>
#include <memory>

#include "shell/uShownMission.h"

class QPagedPaintDevice;
class QTextDocument;
class TReportPage;

class TReportPanel : public QWidget {
  Q_OBJECT

 public:
  explicit TReportPanel(QWidget* parent);
  ~TReportPanel() override;

  void ShowReport(const TShownMission& mission);
  void Clear();
  // Prints all pages, laid out for the device's page size.
  void Print(QPagedPaintDevice& device) const;

 private:
  std::unique_ptr<QTextDocument> FDocument;
  TReportPage* FPage;
};
