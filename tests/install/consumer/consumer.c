#include <stdio.h>
#include <vek.h>

int main(void) {
    char name[] = "nobody";
    const float index = FindVekApp(name, 0, NULL, 0, NULL, 0, NULL);
    printf("%g, started at %ld\n", (double)index, (long)s_startTimeVal.tv_sec);
    return index == -1 ? 0 : 1;
}
