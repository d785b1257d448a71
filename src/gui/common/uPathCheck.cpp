#include "gui/common/uPathCheck.h"

#include <system_error>
#include <tuple>

#include "base/uFiles.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/common/uQtText.h"

TPathCheck::TPathCheck(QObject* parent) : QObject(parent), FTask(new TBackgroundTask(this)) {}

void TPathCheck::Check(const QStringList& paths) {
  if (paths.isEmpty()) return FTask->Cancel();
  // Without a thread nothing is known of the paths.
  std::ignore = FTask->Start([this, paths](const TBackgroundTask::TReport& report) {
    for (const QString& path : paths) {
      std::error_code unknown;
      const bool exists = std::filesystem::exists(PathFromUtf8(Utf8(path)), unknown);
      if (!report([this, path, exists] { emit Checked(path, exists); })) return;
    }
  });
}
