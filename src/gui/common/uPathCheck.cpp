#include "gui/common/uPathCheck.h"

#include <mutex>
#include <system_error>
#include <thread>

#include "base/uFiles.h"
#include "gui/common/uQtText.h"

// Outlives its owner for as long as the thread needs it.
struct TPathCheck::TShared {
  std::mutex Mutex;
  TPathCheck* Owner;  // none once it has gone
  QStringList Paths;  // still to be asked for
  bool Running = false;
};

TPathCheck::TPathCheck(QObject* parent) : QObject(parent), FShared(std::make_shared<TShared>()) {
  FShared->Owner = this;
}

TPathCheck::~TPathCheck() {
  const std::lock_guard lock(FShared->Mutex);
  FShared->Owner = nullptr;
  FShared->Paths.clear();
}

void TPathCheck::Check(const QStringList& paths) {
  const std::lock_guard lock(FShared->Mutex);
  FShared->Paths = paths;
  if (FShared->Running || paths.isEmpty()) return;
  try {
    std::thread([shared = FShared] { Run(shared); }).detach();
    FShared->Running = true;
  } catch (const std::system_error&) {  // no thread: nothing is known of the paths
  }
}

void TPathCheck::Run(const std::shared_ptr<TShared>& shared) {
  std::unique_lock lock(shared->Mutex);
  while (!shared->Paths.isEmpty()) {
    const QString path = shared->Paths.takeFirst();
    lock.unlock();
    std::error_code unknown;
    const bool exists = std::filesystem::exists(PathFromUtf8(Utf8(path)), unknown);
    lock.lock();
    if (shared->Owner == nullptr) break;
    TPathCheck* owner = shared->Owner;  // posted to while the lock keeps it alive
    QMetaObject::invokeMethod(
        owner, [owner, path, exists] { emit owner->Checked(path, exists); }, Qt::QueuedConnection);
  }
  shared->Running = false;
}
