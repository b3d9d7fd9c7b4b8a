// owned.h - what the libraries of C give, owned.
#ifndef KIGOU_CHART_OWNED_H
#define KIGOU_CHART_OWNED_H

#include <memory>

namespace chart {

template <auto release>
struct Release {
    template <class T>
    void operator()(T *object) const {
        release(object);
    }
};

/** @tparam release  what the library has for giving it back */
template <class T, auto release>
using Owned = std::unique_ptr<T, Release<release>>;

} // namespace chart

#endif
