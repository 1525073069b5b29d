#pragma once

#include <memory>

// As BXPlatform::chooseFile. Called on the main thread, as everything that shows windows there.
std::unique_ptr<char[]> bxChooseFileInPanel(const char* title);
