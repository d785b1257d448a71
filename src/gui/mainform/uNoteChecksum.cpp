#include "gui/mainform/uNoteChecksum.h"

#include <fmt/format.h>

#include <chrono>
#include <stdexcept>
#include <tuple>

#include "base/uProgress.h"
#include "platform/uSha256.h"

namespace {

using TClock = std::chrono::steady_clock;

// Says every second how far it is, and ends the loop when nobody listens.
class TReporting final : public IProgress {
 public:
  using TSay = std::function<bool(int percent)>;
  explicit TReporting(TSay say) : FSay(std::move(say)) {}
  void SetStatus(std::string_view /*text*/) override {}
  void SetPosition(double position) override { FPosition = position; }
  void SetMaximum(double maximum) override { FMaximum = maximum; }
  void ProcessMessages() override {
    constexpr std::chrono::milliseconds kBetween(500);
    const TClock::time_point now = TClock::now();
    if (now - FSaid < kBetween) return;
    FSaid = now;
    if (!FSay(static_cast<int>(100 * FPosition / FMaximum))) throw std::runtime_error("cancelled");
  }

 private:
  TSay FSay;
  TClock::time_point FSaid = TClock::now();
  double FPosition = 0, FMaximum = 1;
};

}  // namespace

void TNoteChecksum::Compute(const std::filesystem::path& recording,
                            const std::function<void(const std::filesystem::path&, const std::string&)>& done) {
  if (recording == FRecording) return;
  FRecording = recording;
  const auto finish = [this, done, recording](const std::string& sha256) {
    FRecording.clear();
    if (std::exchange(FSpoke, false)) FProgress({});
    done(recording, sha256);
  };
  const auto say = [this](int percent) {
    FSpoke = true;
    FProgress(fmt::format("Checksum of the recording, for its notes: {} %", percent));
  };
  std::ignore = FTask.Start([recording, finish, say](const TBackgroundTask::TReport& report) {
    TReporting progress([&](int percent) { return report([say, percent] { say(percent); }); });
    const std::string sha256 = Sha256Of(recording, progress);
    report([finish, sha256] { finish(sha256); });
  });
}
