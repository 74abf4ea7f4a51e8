// KeyIndex: finds an element by its key, compared without regard to letter case.
//
// The index owns neither elements nor keys: an element offers keyText() and keyHash() (the folded
// hash of that text) and keeps both unchanged while it is indexed. Open addressing with linear
// probing; an entry is twelve bytes and holds the hash, so that growing and removing touch no element.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "automation/CaseFolding.h"
#include "automation/String.h"

namespace zelUtilities {

template <class Element>
class KeyIndex {
 public:
  // The element under the key, or nothing.
  Element* find(StringView key) const { return size_ == 0 ? nullptr : find(key, foldedHash(key)); }
  Element* find(StringView key, std::uint32_t hash) const {
    if (size_ == 0) return nullptr;
    const std::uint32_t wanted = stored(hash);
    for (std::size_t at = home(wanted);; at = next(at)) {
      const Entry& entry = entries_[at];
      if (entry.hash == 0) return nullptr;
      if (entry.hash == wanted && equalFolded(entry.element()->keyText(), key)) return entry.element();
    }
  }

  // After this the next insert cannot fail.
  void makeRoom() {
    if (size_ >= limit_) grow();
  }
  // Makes room for so many elements in all, so that none of them makes the index grow.
  void reserve(std::size_t count) {
    if (count > limit_) growTo(count + count / 3 + 2);
  }
  // Starts fetching what a look-up of the hash will need, which takes a while in a large index. Inlined
  // early, since a compiler leaves out calls of a function that has neither result nor effect.
  [[gnu::always_inline]] void prefetch(std::uint32_t hash) const {
    if (size_ != 0) __builtin_prefetch(&entries_[home(stored(hash))]);
  }

  // The key must not be present.
  void insert(Element* element) { insert(element, element->keyHash()); }
  void insert(Element* element, std::uint32_t hash) {
    makeRoom();
    ++size_;
    place(entries_, Entry(stored(hash), element));
  }

  void erase(const Element* element) { erase(element, element->keyHash()); }
  void erase(const Element* element, std::uint32_t hash) {
    if (size_ == 0) return;
    std::size_t hole = home(stored(hash));
    while (entries_[hole].element() != element) {
      if (entries_[hole].hash == 0) return;
      hole = next(hole);
    }
    --size_;
    closeHole(hole);
  }

  void clear() {
    entries_ = {};
    size_ = limit_ = 0;
  }
  std::size_t size() const { return size_; }

 private:
  struct Entry {
    std::uint32_t hash = 0;  // 0 marks a free entry
    std::uint32_t address[sizeof(Element*) / sizeof(std::uint32_t)] = {};

    Entry() = default;
    Entry(std::uint32_t storedHash, Element* element) : hash(storedHash) {
      std::memcpy(address, &element, sizeof element);
    }
    Element* element() const {
      Element* pointer;
      std::memcpy(&pointer, address, sizeof pointer);
      return pointer;
    }
  };

  static std::uint32_t stored(std::uint32_t hash) { return hash == 0 ? 1 : hash; }
  static std::size_t home(std::uint32_t hash, std::size_t capacity) {
    return static_cast<std::size_t>((static_cast<std::uint64_t>(hash) * capacity) >> 32);
  }
  std::size_t home(std::uint32_t hash) const { return home(hash, entries_.size()); }
  std::size_t next(std::size_t at) const { return at + 1 == entries_.size() ? 0 : at + 1; }

  static void place(std::vector<Entry>& entries, const Entry& entry) {
    std::size_t at = home(entry.hash, entries.size());
    while (entries[at].hash != 0) at = at + 1 == entries.size() ? 0 : at + 1;
    entries[at] = entry;
  }

  void grow() { growTo(entries_.empty() ? 8 : entries_.size() + entries_.size() / 2 + 4); }
  void growTo(std::size_t capacity) {
    std::vector<Entry> larger(capacity);
    for (const Entry& entry : entries_)
      if (entry.hash != 0) place(larger, entry);
    entries_.swap(larger);
    limit_ = capacity - capacity / 4 - 1;  // a free entry ends every search
  }

  // Moves later entries of the run back, so that no lookup stops too early.
  void closeHole(std::size_t hole) {
    const auto distance = [this](std::size_t from, std::size_t to) {
      return to >= from ? to - from : to + entries_.size() - from;
    };
    for (std::size_t at = next(hole); entries_[at].hash != 0; at = next(at)) {
      if (distance(home(entries_[at].hash), at) >= distance(hole, at)) {
        entries_[hole] = entries_[at];
        hole = at;
      }
    }
    entries_[hole] = Entry();
  }

  std::vector<Entry> entries_;
  std::size_t size_ = 0;
  std::size_t limit_ = 0;
};

}  // namespace zelUtilities
