#pragma once

namespace quenmar {

/// Thrown when an answer or a limit ends the whole application at once: nothing further is shown
/// and nothing is saved. It is not a `std::exception`, so that no handler of failures catches it;
/// only `main` of the console program and the commands of the main window catch it.
struct EndApplication {};

}  // namespace quenmar
