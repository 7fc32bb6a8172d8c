#include "Gui/App/Startup.h"

int main(int argc, char **argv)
{
    return ChipLoom::runChipLoom(argc, argv);
}
