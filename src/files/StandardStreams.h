#pragma once

namespace leafwright {

/// Takes the numbers of standard input, output and error, where whoever started the program has left them
/// closed: otherwise the next file that is opened would get such a number, be read as the input, or have
/// messages written into it. Reading and writing fail there as before. To be called first in main().
void reserveStandardStreams();

}  // namespace leafwright
