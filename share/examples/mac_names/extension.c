/* extension EXT: prints the Macintosh type and creator of a file-name extension. */
#include <stdio.h>
#include <string.h>
#include <tamrix32/extmap.h>

int main(int argc, char** argv) {
    char type[5], creator[5];
    SExtensionMap map;
    if (argc != 2) return 2;
    memset(&map, 0, sizeof map);
    map.extension = argv[1];
    map.type = type;
    map.creator = creator;
    if (!GetExtMap(&map)) GetDefaultExtMap(&map);
    printf("%s %s\n", type, creator);
    return 0;
}
