// Shows a mapping dialog of the shipped DLL, for screenshots: show_dialog DLL edit|add CREATOR TYPE.
#include <windows.h>

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const HMODULE library = LoadLibraryA(argv[1]);
    const char* const name =
        std::strcmp(argv[2], "add") ? "?FileExtMapEditDlg@@YAHPAXPAD1@Z" : "?AddExtMapDlg@@YAHPAXPAD1@Z";
    const auto show = reinterpret_cast<int(__cdecl*)(void*, char*, char*)>(
        reinterpret_cast<void*>(library ? GetProcAddress(library, name) : nullptr));
    if (!show) {
        std::fprintf(stderr, "show_dialog: no %s in %s\n", name, argv[1]);
        return 1;
    }
    return show(nullptr, argv[3], argv[4]);
}
