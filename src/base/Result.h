#pragma once

#include <tl/expected.hpp>

namespace tulvane {

/// What an operation that may fail returns: a T, or an error E whose `description()` is the text that the
/// user reads. Failures travel as values; exceptions do not cross a room's interface.
template <class T, class E>
using Result = tl::expected<T, E>;

/// Makes the failed Result from an error: `return failure(EngineError::noModelLoaded());`
template <class E>
[[nodiscard]] auto failure(E&& error)
{
    return tl::make_unexpected(std::forward<E>(error));
}

} // namespace tulvane
