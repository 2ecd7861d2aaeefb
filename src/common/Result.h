#pragma once

#include <optional>
#include <utility>
#include <variant>

namespace kelvora {

// ErrorOf carries an error into a Result; make one with Fail(error).
template <class E> struct ErrorOf { E error; };

// Fail wraps an error so that it converts to any Result with that error type.
template <class E> ErrorOf<E> Fail(E error) {
    return ErrorOf<E>{std::move(error)};
}

// Result holds either the value of a call that worked or the error of one that did not.
// A Result is built from a value (success) or from Fail(error); value() on an error throws
// std::bad_variant_access, so callers test the Result first.
template <class T, class E> class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(ErrorOf<E> failure) : m_state(std::in_place_index<1>, std::move(failure.error)) {}

    bool has_value() const { return m_state.index() == 0; }
    explicit operator bool() const { return has_value(); }

    T& value() & { return std::get<0>(m_state); }
    const T& value() const& { return std::get<0>(m_state); }
    T&& value() && { return std::get<0>(std::move(m_state)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    // error is the failure's error; only valid when has_value() is false.
    const E& error() const { return std::get<1>(m_state); }

private:
    std::variant<T, E> m_state;
};

// Result<void, E> is the outcome of an operation that yields nothing but may fail; a
// default-built one is a success.
template <class E> class [[nodiscard]] Result<void, E> {
public:
    Result() = default;
    Result(ErrorOf<E> failure) : m_error(std::move(failure.error)) {}

    bool has_value() const { return !m_error.has_value(); }
    explicit operator bool() const { return has_value(); }

    // error is the failure's error; only valid when has_value() is false.
    const E& error() const { return m_error.value(); }

private:
    std::optional<E> m_error;
};

} // namespace kelvora
