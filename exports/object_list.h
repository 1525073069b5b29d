#pragma once

// Fills s_objectList from the object list file, anew; the number of objects, 0 when the file is
// missing.
int readObjectList();
