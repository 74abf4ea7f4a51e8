// SlotList: elements in the order of insertion, with cheap removal anywhere.
//
// An element remembers its slot in a member of its own, so removing it needs no search: the slot
// stays behind empty. Empty slots at the ends are dropped, scattered ones are closed when they
// outnumber the elements. A position is found directly while no slots are empty in between, else
// through a tree of counts made on demand. Cursors stay valid through every change.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace zelUtilities {

template <class Element, std::uint32_t Element::*slotMember>
class SlotList {
 public:
  // A place between elements. While it lives the list must live.
  class Cursor {
   public:
    explicit Cursor(SlotList& list) : list_(&list), slot_(list.base_), next_(list.cursors_) {
      list.cursors_ = this;
    }
    Cursor(const Cursor& other) : Cursor(*other.list_) { slot_ = other.slot_; }
    Cursor& operator=(const Cursor&) = delete;
    ~Cursor() {
      Cursor** link = &list_->cursors_;
      while (*link != this) link = &(*link)->next_;
      *link = next_;
    }
    // The next element still there, or nothing at the end.
    Element* next() { return list_->nextFrom(slot_); }
    void reset() { slot_ = list_->base_; }

   private:
    friend class SlotList;
    SlotList* list_;
    std::uint32_t slot_;
    Cursor* next_;
  };

  SlotList() = default;
  SlotList(const SlotList&) = delete;
  SlotList& operator=(const SlotList&) = delete;

  std::size_t size() const { return live_; }

  void append(Element* element) {
    element->*slotMember = base_ + static_cast<std::uint32_t>(slots_.size());
    slots_.push_back(element);
    ++live_;
    if (counts_.empty()) return;
    try {
      appendCount();
    } catch (const std::bad_alloc&) {
      counts_ = {};  // made again on demand
    }
  }

  void remove(Element* element) {
    const std::size_t at = element->*slotMember - base_;
    slots_[at] = nullptr;
    --live_;
    if (!counts_.empty()) countRemoval(at);
    if (at == first_) skipEmptyFront();
    if (at + 1 == slots_.size()) dropEmptyEnd();
    if (slots_.size() > 2 * live_ + 16) close();
  }

  // The element at a position counted from 0, which must be below size().
  Element* at(std::size_t position) {
    if (first_ + live_ == slots_.size()) return slots_[first_ + position];
    if (counts_.empty()) buildCounts();
    return slots_[slotOf(position)];
  }

  // Exchanges the elements, not the cursors: those of both lists go back to the start.
  void swap(SlotList& other) {
    slots_.swap(other.slots_);
    counts_.swap(other.counts_);
    std::swap(live_, other.live_);
    std::swap(first_, other.first_);
    std::swap(base_, other.base_);
    for (Cursor* cursor = cursors_; cursor; cursor = cursor->next_) cursor->slot_ = base_;
    for (Cursor* cursor = other.cursors_; cursor; cursor = cursor->next_) cursor->slot_ = other.base_;
  }

  void reserve(std::size_t count) { slots_.reserve(count); }

  // The first element at or after the slot, which is moved behind it; nothing at the end.
  // Start from startSlot(); only while nothing is removed in between.
  Element* nextFrom(std::uint32_t& slot) const {
    std::size_t at = slot - base_;
    if (at < first_) at = first_;
    while (at < slots_.size() && !slots_[at]) ++at;
    if (at >= slots_.size()) return nullptr;
    slot = base_ + static_cast<std::uint32_t>(at) + 1;
    return slots_[at];
  }
  std::uint32_t startSlot() const { return base_; }

 private:
  void skipEmptyFront() {
    while (first_ < slots_.size() && !slots_[first_]) ++first_;
  }

  // A cursor that had passed them comes back to the end, where it meets the next element appended.
  void dropEmptyEnd() {
    while (!slots_.empty() && !slots_.back()) slots_.pop_back();
    if (!counts_.empty()) counts_.resize(slots_.size() + 1);
    first_ = std::min(first_, slots_.size());
    const auto end = static_cast<std::uint32_t>(slots_.size());
    for (Cursor* cursor = cursors_; cursor; cursor = cursor->next_)
      if (cursor->slot_ - base_ > end) cursor->slot_ = base_ + end;
  }

  // Drops empty slots. Where all of them are at the front, no element moves its slot.
  void close() {
    counts_ = {};
    if (first_ + live_ == slots_.size()) {
      // Slot numbers go round after 2^32, so only their distance from the base tells which is earlier.
      const auto dropped = static_cast<std::uint32_t>(first_);
      for (Cursor* cursor = cursors_; cursor; cursor = cursor->next_)
        if (cursor->slot_ - base_ < dropped) cursor->slot_ = base_ + dropped;
      slots_.erase(slots_.begin(), slots_.begin() + static_cast<std::ptrdiff_t>(first_));
      base_ += dropped;
      first_ = 0;
      return;
    }
    moveCursors();
    std::size_t to = 0;
    for (Element* element : slots_) {
      if (!element) continue;
      element->*slotMember = static_cast<std::uint32_t>(to);
      slots_[to++] = element;
    }
    slots_.resize(to);
    base_ = 0;
    first_ = 0;
  }

  void moveCursors() {
    for (Cursor* cursor = cursors_; cursor; cursor = cursor->next_) {
      std::uint32_t before = 0;
      for (std::size_t at = 0; at < cursor->slot_ - base_; ++at) before += slots_[at] != nullptr;
      cursor->slot_ = before;
    }
  }

  // Counts of elements as a binary indexed tree over the slots.
  void buildCounts() {
    counts_.assign(slots_.size() + 1, 0);
    for (std::size_t i = 1; i < counts_.size(); ++i) {
      counts_[i] += slots_[i - 1] != nullptr;
      const std::size_t parent = i + (i & (~i + 1));
      if (parent < counts_.size()) counts_[parent] += counts_[i];
    }
  }
  void appendCount() {
    const std::size_t i = slots_.size();
    std::uint32_t count = 1;
    for (std::size_t step = 1; step < (i & (~i + 1)); step *= 2) count += counts_[i - step];
    counts_.push_back(count);
  }
  void countRemoval(std::size_t at) {
    for (std::size_t i = at + 1; i < counts_.size(); i += i & (~i + 1)) --counts_[i];
  }
  std::size_t slotOf(std::size_t position) const {
    std::size_t at = 0;
    std::size_t left = position + 1;
    for (std::size_t step = std::bit_floor(counts_.size() - 1); step != 0; step /= 2) {
      if (at + step < counts_.size() && counts_[at + step] < left) {
        at += step;
        left -= counts_[at];
      }
    }
    return at;
  }

  std::vector<Element*> slots_;
  std::vector<std::uint32_t> counts_;  // empty until needed
  std::size_t live_ = 0;
  std::size_t first_ = 0;   // no element before it
  std::uint32_t base_ = 0;  // slot number of slots_[0]
  Cursor* cursors_ = nullptr;
};

}  // namespace zelUtilities
