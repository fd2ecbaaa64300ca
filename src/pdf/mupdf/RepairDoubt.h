#pragma once

#include "pdf/mupdf/Reader.h"

namespace leafwright::mupdf {

/// Throws Error where the repair of a file may have taken an object's older version, or a part of a stream,
/// for it: other readers, which go by what is left of the file's own tables, might find the right one in the
/// old file, and could no more in one that was written new.
///
/// MuPDF's repair goes by what looks like an object. It takes what is in object streams before what stands by
/// itself, wherever in the file that is, and the last stream by number, not by place. A stream whose length
/// is an object of its own ends for it with the first "endstream".
void refuseDoubtfulRepair(Reader &reader);

}  // namespace leafwright::mupdf
