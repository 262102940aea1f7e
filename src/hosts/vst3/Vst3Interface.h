// The interface's C structures, and how an object of ours shows them to a host.
#pragma once

#include "travesty/edit_controller.h"
#include "travesty/message.h"
#include "travesty/view.h"

#include <utility>

namespace qor::vst3 {

/// One interface of an object: the host holds a pointer to this, and its functions get it as `self`.
template <class Table, class Owner>
struct Face {
    const Table* table;
    Owner* owner;

    static Owner& ownerOf(void* self) noexcept { return *static_cast<Face*>(self)->owner; }
};

/// The face as the interface's functions take it.
template <class Interface, class Table, class Owner>
Interface** asInterface(Face<Table, Owner>& face) noexcept {
    return static_cast<Interface**>(static_cast<void*>(&face));
}

/// The call's result; no exception leaves a function that a host calls.
template <class Call>
v3_result guarded(Call&& call) noexcept {
    try {
        return std::forward<Call>(call)();
    } catch (...) {
        return V3_INTERNAL_ERR;
    }
}

} // namespace qor::vst3
