#include "categories/TreeControllerLookup.h"

namespace leafwright {

size_t countOfTopLevel(const TreeController &controller) {
    return controller.arrangedObjects().childCount();
}

}  // namespace leafwright
