// Which of some paths are there, asked for on a thread of its own: a dead network drive holds up that thread and not
// the window. A question that hangs is left behind when the program ends; it holds on to nothing of it.
#pragma once

#include <QObject>
#include <QStringList>
#include <memory>

class TPathCheck : public QObject {
  Q_OBJECT

 public:
  explicit TPathCheck(QObject* parent);
  ~TPathCheck() override;

  // Answers with Checked for each path in turn. Paths that are still to be asked for from an earlier call are dropped.
  void Check(const QStringList& paths);

 signals:
  void Checked(const QString& path, bool exists);

 private:
  struct TShared;
  static void Run(const std::shared_ptr<TShared>& shared);

  std::shared_ptr<TShared> FShared;
};
