#ifndef ORVIA_COMMON_NUMBERED_ARRAY_H
#define ORVIA_COMMON_NUMBERED_ARRAY_H

#include <cstddef>
#include <utility>
#include <vector>

#include "common/fault.h"

/// An array whose entries count from 1. Element 0 exists and is unused; an upper bound of 0 means
/// empty.
template <typename T>
class NumberedArray {
 public:
    NumberedArray() : elements_(1) {}

    /// Number of the last entry, 0 when empty.
    [[nodiscard]] int UpperBound() const { return static_cast<int>(elements_.size()) - 1; }

    /// Whether an entry of that number exists (element 0 is none).
    [[nodiscard]] bool Holds(int number) const { return number >= 1 && number <= UpperBound(); }

    /// Element `number`, 0 to the upper bound; anything else is a Fault.
    [[nodiscard]] T& operator[](int number) { return elements_[Checked(number)]; }
    [[nodiscard]] const T& operator[](int number) const { return elements_[Checked(number)]; }

    /// Grows by one; the new entry is the last. Returns its number.
    int Append(T entry) {
        elements_.push_back(std::move(entry));
        return UpperBound();
    }

    /// Takes entry `number` out; those behind it move down by one. Faults if there is none.
    void Remove(int number) {
        if (!Holds(number)) {
            throw Fault("no such entry");
        }
        elements_.erase(elements_.begin() + number);
    }

    /// Back to the empty form: element 0 alone, with its initial value.
    void Reset() { elements_.assign(1, T{}); }

    /// The entries from 1 on, for a range loop.
    [[nodiscard]] auto begin() { return elements_.begin() + 1; }
    [[nodiscard]] auto end() { return elements_.end(); }
    [[nodiscard]] auto begin() const { return elements_.begin() + 1; }
    [[nodiscard]] auto end() const { return elements_.end(); }

 private:
    [[nodiscard]] std::size_t Checked(int number) const {
        if (number < 0 || number > UpperBound()) {
            throw Fault("index outside the array");
        }
        return static_cast<std::size_t>(number);
    }

    std::vector<T> elements_;
};

#endif  // ORVIA_COMMON_NUMBERED_ARRAY_H
