// Recordings made in sight, byte by byte, and what a read makes of them.
#pragma once

#include <bit>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/uMessages.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uReadFileThread.h"

using TBytes = std::vector<std::uint8_t>;

// A folder that goes with the test.
class TTempFolder {
 public:
  TTempFolder();
  ~TTempFolder();
  TTempFolder(const TTempFolder&) = delete;
  TTempFolder& operator=(const TTempFolder&) = delete;
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return (FPath / name).make_preferred(); }
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }

 private:
  std::filesystem::path FPath;
};

TBytes BytesOfFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const TBytes& bytes);
TBytes Deflated(const TBytes& content);
TBytes Inflated(const TBytes& stream);
// Overwrites, removes, repeats or cuts parts.
TBytes Mutant(TBytes bytes, std::mt19937& random);

// Readings that are marks, as singles to put into a record.
inline const float kNone = std::bit_cast<float>(0xFFFFFFFFU);
inline const float kEnd = std::bit_cast<float>(0xFFFFFFFEU);
inline const float kOtherNaN = std::bit_cast<float>(0x7FC00000U);

// The body of a block.
struct TBody {
  TBytes bytes;

  template <class T>
  TBody& Put(T value) {
    return Append({reinterpret_cast<const std::uint8_t*>(&value), sizeof value});
  }
  TBody& Append(std::span<const std::uint8_t> more);
  TBody& Text(std::string_view ansi);
};

struct TTestRecord {
  double ms;
  std::vector<float> readings;
};

// The inflated content of a data file; each call appends a block.
class TTestRecording {
 public:
  TTestRecording();  // with the file header
  TTestRecording& Block(std::uint16_t type, const TBytes& body);
  TTestRecording& Creator(std::string_view name = "korvex165_reader.exe");
  TTestRecording& StartTime(double dateTime);
  TTestRecording& MissionHeader(float levelOn, float levelOff);
  TTestRecording& Channels(std::initializer_list<std::string_view> names);
  // One data block.
  TTestRecording& Data(const std::vector<TTestRecord>& records);

  TBytes content;
};

TBody MissionHeaderBody(float levelOn, float levelOff);

// Keeps what is posted.
class TRecordingPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override { Messages.push_back(message); }
  std::vector<TMessage> Messages;
};

// What the reader posted, and what it says of the file; the mission model holds the rest.
struct TOutcome {
  std::vector<TMessage> messages;
  TReadExtent extent;

  [[nodiscard]] std::uint64_t Last() const { return messages.back().wParam; }
  [[nodiscard]] std::int64_t Code() const { return messages.back().lParam; }
};

// Reads into an empty model, by both ways to inflate; it is a failure of the test if they differ.
TOutcome ReadFile(const std::filesystem::path& path, std::uint64_t memoryBound = TReadFileThread::kNoMemoryBound);
TOutcome ReadStream(const TBytes& stream, std::uint64_t memoryBound = TReadFileThread::kNoMemoryBound);
inline TOutcome Read(const TTestRecording& recording) {
  return ReadStream(Deflated(recording.content));
}
