#pragma once

namespace talmo::benchmarks {

/// What the benchmark itself uses, where it runs the code that it measures.
namespace ThisProcess {

double residentKilobytes();
/// Of all threads.
double processorSeconds();

} // namespace ThisProcess

} // namespace talmo::benchmarks
