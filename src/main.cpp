#include "app/Application.h"

int main(int argc, char **argv) {
    return leafwright::applicationMain(argc, argv);
}
