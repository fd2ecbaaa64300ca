#include "pdf/mupdf/Walk.h"

#include "pdf/mupdf/Context.h"

namespace leafwright::mupdf {

void Walk::step() {
    if (++steps_ > mostSteps) throw Error("a list of its objects has no end");
}

void Walk::keep(qsizetype bytes) {
    keptBytes_ += bytes;
    if (keptBytes_ > mostKeptBytes) throw ReadProblem(tooMuchMemoryError());
}

bool Walk::enter(const Object &object) {
    step();
    const int number = object.objectNumber();
    if (number == 0) return true;
    if (entered_.contains(number)) return false;
    entered_.insert(number);
    return true;
}

}  // namespace leafwright::mupdf
