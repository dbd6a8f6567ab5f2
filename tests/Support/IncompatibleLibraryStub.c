/* Stands in for a neural recogniser's library that is too old or, with LACKING, lacks required functions, or, with
   UNKNOWN, is newer than any that was tried. */
const char *SherpaOnnxGetVersionStr(void);

const char *SherpaOnnxGetVersionStr(void)
{
#if defined(LACKING)
    return "1.99.0";
#elif defined(UNKNOWN)
    return "2.0.1";
#else
    return "1.12.12";
#endif
}
