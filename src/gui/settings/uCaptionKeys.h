// Keys of the captions of a page.
#pragma once

#include <QString>

// The caption with its key: its first character that is not among the keys `taken` before; it joins them.
inline QString WithKey(const QString& caption, QString& taken) {
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (taken.contains(caption[i], Qt::CaseInsensitive)) continue;
    taken += caption[i];
    return QString(caption).insert(i, '&');
  }
  return caption;
}
