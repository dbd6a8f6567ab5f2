/* Stands in for a neural recogniser's library that is too old or, with LACKING, lacks required functions. */
const char *SherpaOnnxGetVersionStr(void);

const char *SherpaOnnxGetVersionStr(void)
{
#ifdef LACKING
    return "1.99.0";
#else
    return "1.12.12";
#endif
}
