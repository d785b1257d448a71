// A list of plain values in contiguous memory that is filled by appending only. It grows with realloc: where that moves
// pages, as on Linux, a long list is not copied, and memory that is not filled yet is not taken.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <utility>

template <class T>
class TAppendList {
  static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= alignof(std::max_align_t));

 public:
  TAppendList() = default;
  TAppendList(TAppendList&& other) noexcept
      : FItems(std::move(other.FItems)), FCount(std::exchange(other.FCount, 0)), FRoom(std::exchange(other.FRoom, 0)) {}
  TAppendList& operator=(TAppendList&& other) noexcept {
    FItems = std::move(other.FItems);
    FCount = std::exchange(other.FCount, 0);
    FRoom = std::exchange(other.FRoom, 0);
    return *this;
  }

  // Throws std::bad_alloc, and keeps the list, when there is no memory.
  void Append(const T& item) {
    if (FCount == FRoom) SetRoom(FRoom == 0 ? kFirstRoom : 2 * FRoom);
    FItems.get()[FCount++] = item;
  }
  // Gives back the room that is not filled; keeps it when there is no memory to do that.
  void Trim() noexcept {
    if (FCount == 0) {
      FItems.reset();
      FRoom = 0;
    } else if (FCount < FRoom) {
      Resize(FCount);
    }
  }

  [[nodiscard]] std::size_t Count() const { return FCount; }
  [[nodiscard]] std::span<const T> Values() const { return {FItems.get(), FCount}; }
  // Throws std::out_of_range.
  [[nodiscard]] const T& At(std::size_t index) const {
    if (index >= FCount) throw std::out_of_range("The list has no such item.");
    return FItems.get()[index];
  }

 private:
  static constexpr std::size_t kFirstRoom = 4;
  struct TFree {
    void operator()(T* items) const noexcept { std::free(items); }
  };

  void SetRoom(std::size_t room) {
    if (room > static_cast<std::size_t>(-1) / (2 * sizeof(T)) || !Resize(room)) throw std::bad_alloc();
  }
  bool Resize(std::size_t room) noexcept {
    void* const moved = std::realloc(static_cast<void*>(FItems.get()), room * sizeof(T));
    if (moved == nullptr) return false;
    static_cast<void>(FItems.release());
    FItems.reset(static_cast<T*>(moved));
    FRoom = room;
    return true;
  }

  std::unique_ptr<T, TFree> FItems;
  std::size_t FCount = 0;
  std::size_t FRoom = 0;
};
