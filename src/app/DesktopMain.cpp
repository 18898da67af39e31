#include <app/DesktopProgram.h>

int main(int argc, char** argv)
{
    tulvane::runDesktopProgram(argc, argv);
}
