// One include of the header TOLVANE_LAYERING_HEADER, and nothing else. Built
// against a room that must not see that header, it fails to compile; built
// against the room that owns it, it compiles (tests/layering/CMakeLists.txt).
#include TOLVANE_LAYERING_HEADER
