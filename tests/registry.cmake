# The registry classes, the stand-in's registry and the extension store.
tamrix_suite(registry_text_test SOURCES registry_text_test.cpp)
