#pragma once

#include <algorithm>
#include <vector>

// What BXBoolArray does, the slow and obvious way: one truth per bit in use.
class ReferenceBits {
public:
    std::vector<bool> bits;

    int count() const { return static_cast<int>(bits.size()); }

    void assign(int n, bool value) { bits.assign(static_cast<std::size_t>(std::max(n, 0)), value); }
    void resize(int n, bool fill) { bits.resize(static_cast<std::size_t>(std::max(n, 0)), fill); }
    bool get(int i) const { return i >= 0 && i < count() && at(i); }
    void write(int i, bool value) { bits[static_cast<std::size_t>(i)] = value; }
    void writeGrowing(int i, bool value) {
        if (i < 0) return;
        if (i >= count()) resize(i + 1, false);
        write(i, value);
    }
    void writeRange(int first, int n, bool value) {
        if (first < 0) return;
        const int end = first + std::max(n, 1);
        if (end > count()) resize(end, false);
        for (int i = first; i < end; ++i) write(i, value);
    }
    void writeListed(const std::vector<int>& indexes, bool value) {
        for (const int i : indexes) {
            if (i >= count()) resize(i + 1, false);
        }
        for (const int i : indexes) {
            if (i >= 0) write(i, value);
        }
    }
    void writeBytesAround(const std::vector<int>& indexes, bool value) {
        for (const int index : indexes) {
            for (int i = index / 8 * 8; i < index / 8 * 8 + 8 && i < count(); ++i) write(i, value);
        }
    }
    void insert(int i, bool value) {
        if (i >= 0 && i < count()) bits.insert(bits.begin() + i, value);
    }
    void erase(int i) {
        if (i >= 0 && i < count()) bits.erase(bits.begin() + i);
    }
    void merge(const ReferenceBits& other) {
        if (other.count() > count()) resize(other.count(), false);
        for (int i = 0; i < other.count(); ++i) write(i, at(i) || other.at(i));
    }
    void toggle(const ReferenceBits& other) {
        if (other.count() > count()) resize(other.count(), false);
        for (int i = 0; i < other.count(); ++i) write(i, at(i) != other.at(i));
    }
    void inter(const ReferenceBits& other) {
        resize(std::min(count(), other.count()), false);
        for (int i = 0; i < count(); ++i) write(i, at(i) && other.at(i));
    }
    void clear(const ReferenceBits& other) {
        for (int i = 0; i < std::min(count(), other.count()); ++i) write(i, at(i) && !other.at(i));
    }
    bool hasInter(const ReferenceBits& other) const {
        for (int i = 0; i < std::min(count(), other.count()); ++i) {
            if (at(i) && other.at(i)) return true;
        }
        return false;
    }
    bool bitTest(const ReferenceBits& mask) const {
        for (int i = 0; i < mask.count(); ++i) {
            if (mask.at(i) && !get(i)) return false;
        }
        return true;
    }
    // No array whose count is a multiple of 8, other than the empty one, equals any.
    bool equals(const ReferenceBits& other) const {
        if (count() != other.count()) return false;
        return count() == 0 || (count() % 8 != 0 && bits == other.bits);
    }
    int countWithin(int from, int to, bool value) const {
        int found = 0;
        for (int i = std::max(from, 0); i < std::min(to, count()); ++i) found += at(i) == value;
        return found;
    }
    int findFirst(bool value, int start) const {
        for (int i = std::max(start, 0); i < count(); ++i) {
            if (at(i) == value) return i;
        }
        return -1;
    }
    int findLast(bool value, int start) const {
        for (int i = std::min(start, count() - 1); i >= 0; --i) {
            if (at(i) == value) return i;
        }
        return -1;
    }
    std::vector<int> indexes(bool value) const {
        std::vector<int> found;
        for (int i = 0; i < count(); ++i) {
            if (at(i) == value) found.push_back(i);
        }
        return found;
    }

private:
    bool at(int i) const { return bits[static_cast<std::size_t>(i)]; }
};
