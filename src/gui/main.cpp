// shardles-editor: the level editor's window.
#include "gui/Startup.h"

int main(int argc, char* argv[]) { return shd::gui::RunEditor(argc, argv); }
