#pragma once

namespace tulvane::test {

/// A process of root becomes one of a user without rights, as which compositors start and which they let
/// press keys. Called first in main(), before there are threads. False, with a line on the standard error,
/// where that user could not read the source tree: the process stays as it was.
bool becomeOrdinaryUser();

} // namespace tulvane::test
