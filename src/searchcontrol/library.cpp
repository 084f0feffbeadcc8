#include "search/search_host.h"
#include "searchcontrol/search_control.h"

// The functions by which the program finds the component.

extern "C" {

__attribute__((visibility("default"))) int verdolinSearchInterface() {
    return search::searchInterface;
}

__attribute__((visibility("default"))) QWidget* verdolinCreateSearchControl(
    const search::SearchHost* host) {
    return new searchcontrol::SearchControl(*host);
}
}
