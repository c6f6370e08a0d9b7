// A library that has the entry point of a source manager, to be loaded at run time.

extern "C" int DSM_Entry() {
    return 42;
}
