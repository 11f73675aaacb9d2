// Sorting and binary search over an array, ordered by one overridable comparison.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

template <class T>
class RLsort {
public:
    virtual ~RLsort() = default;
    virtual int Compare(const T& a, const T& b) const = 0;

    // The order of an exchange sort (for i < j: swap when a[i] > a[j]), computed in O(n log n).
    // Where two elements compare equal that order is not stable, so only then is the exchange sort
    // itself run; with distinct keys both give the one ascending order.
    void Sort(std::vector<T>& array) const {
        const std::vector<T> original = array;
        std::sort(array.begin(), array.end(),
                  [this](const T& a, const T& b) { return Compare(a, b) < 0; });
        for (std::size_t i = 1; i < array.size(); ++i) {
            if (Compare(array[i - 1], array[i]) == 0) {
                array = original;
                ExchangeSort(array);
                return;
            }
        }
    }

    // Index of the element equal to `key`, or -1; the array must be sorted by the same comparison.
    int Find(const T& key, const std::vector<T>& array) const {
        const int n = static_cast<int>(array.size());
        if (n == 0) return -1;
        if (Compare(key, array[0]) < 0 || Compare(key, array[n - 1]) > 0) return -1;
        int lo = 0;
        int hi = n - 1;
        while (hi - lo > 1) {
            const int mid = (lo + hi) / 2;
            const int c = Compare(key, array[mid]);
            if (c == 0) return mid;
            if (c < 0) {
                hi = mid;
            } else {
                lo = mid;
            }
        }
        if (Compare(key, array[lo]) == 0) return lo;
        if (Compare(key, array[hi]) == 0) return hi;
        return -1;
    }

private:
    void ExchangeSort(std::vector<T>& array) const {
        for (std::size_t i = 0; i + 1 < array.size(); ++i) {
            for (std::size_t j = i + 1; j < array.size(); ++j) {
                if (Compare(array[i], array[j]) > 0) std::swap(array[i], array[j]);
            }
        }
    }
};
