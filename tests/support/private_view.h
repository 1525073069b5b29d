#pragma once

// Starts this program anew, with its arguments, where the shared tree is its own
// (scripts/private-view). Returns where it is already so; ends the program where it cannot be done.
void enterPrivateView(char** argv);
