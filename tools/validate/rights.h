#pragma once

// Gives up what an ordinary user cannot do, for this process and all that it starts: from then on
// files that may not be read or written cannot be by root either.
void giveUpRights();
