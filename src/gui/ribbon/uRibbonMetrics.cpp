#include "gui/ribbon/uRibbonMetrics.h"

#include <algorithm>

QString PlainCaption(const QString& caption) {
  QString plain;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  if (plain.endsWith("...")) plain.chop(3);
  if (plain.endsWith(QChar(0x2026))) plain.chop(1);
  return plain.trimmed();
}

int RibbonLargeIcon(const QFontMetrics& metrics) {
  return std::max(22, 5 * metrics.height() / 4);
}

int RibbonSmallIcon(const QFontMetrics& metrics) {
  return std::max(16, metrics.height() - 2);
}

int RibbonBodyHeight(const QFontMetrics& metrics) {
  return std::max(3 * (metrics.height() + 6), RibbonLargeIcon(metrics) + 2 * metrics.lineSpacing() + 11);
}
