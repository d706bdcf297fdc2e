#include "VelmoraApp.h"

int main(int argc, char** argv)
{
    return orvella::VelmoraApp::run(argc, argv);
}
