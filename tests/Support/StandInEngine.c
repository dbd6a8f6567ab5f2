/* Stands in for the neural recogniser's library where no trained model is at hand: whatever it is given, it recognises
   the same sentence, and says in which language if it was told. With SLOW, models whose path contains "large" cannot
   keep up with somebody who speaks. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#define STEP 1600

typedef struct {
    int64_t accepted;
    int64_t decoded;
    char language[8];
} Stream;

/* The beginning of the configuration. */
typedef struct {
    int32_t numbers[2];
    const char *models[6];
    const char *tokens;
} Config;

static int isSlow = 0;

#define EXPORT __attribute__((visibility("default")))

EXPORT const char *SherpaOnnxGetVersionStr(void)
{
    return "1.13.8";
}

EXPORT const void *SherpaOnnxCreateOnlineRecognizer(const void *config)
{
#ifdef SLOW
    isSlow = strstr(((const Config *)config)->tokens, "large") != NULL;
#endif
    return config == NULL ? NULL : malloc(1);
}

EXPORT void SherpaOnnxDestroyOnlineRecognizer(const void *recogniser)
{
    free((void *)recogniser);
}

EXPORT const void *SherpaOnnxCreateOnlineStream(const void *recogniser)
{
    return recogniser == NULL ? NULL : calloc(1, sizeof(Stream));
}

EXPORT const void *SherpaOnnxCreateOnlineStreamWithHotwords(const void *recogniser, const char *words)
{
    return words == NULL ? NULL : SherpaOnnxCreateOnlineStream(recogniser);
}

EXPORT void SherpaOnnxDestroyOnlineStream(const void *stream)
{
    free((void *)stream);
}

EXPORT void SherpaOnnxOnlineStreamSetOption(const void *stream, const char *key, const char *value)
{
    Stream *own = (Stream *)stream;
    if (strcmp(key, "language") == 0 && own->accepted == 0) {
        strncpy(own->language, value, sizeof(own->language) - 1);
    }
}

EXPORT void SherpaOnnxOnlineStreamAcceptWaveform(const void *stream, int32_t rate, const float *samples, int32_t count)
{
    (void)rate;
    (void)samples;
    ((Stream *)stream)->accepted += count;
}

EXPORT int32_t SherpaOnnxIsOnlineStreamReady(const void *recogniser, const void *stream)
{
    const Stream *own = stream;
    return recogniser != NULL && own->accepted - own->decoded >= STEP;
}

EXPORT void SherpaOnnxDecodeOnlineStream(const void *recogniser, const void *stream)
{
    (void)recogniser;
    ((Stream *)stream)->decoded += STEP;
    const struct timespec step = {0, 60 * 1000 * 1000};
    if (isSlow) {
        nanosleep(&step, NULL);
    }
}

EXPORT const char *SherpaOnnxGetOnlineStreamResultAsJson(const void *recogniser, const void *stream)
{
    (void)recogniser;
    const Stream *own = stream;
    char text[64];
    snprintf(text, sizeof(text), "{\"text\": \"%s%s\"}", own->decoded > 0 ? "Better words." : "", own->language);
    return strdup(text);
}

EXPORT void SherpaOnnxDestroyOnlineStreamResultJson(const char *json)
{
    free((void *)json);
}

EXPORT void SherpaOnnxOnlineStreamInputFinished(const void *stream)
{
    (void)stream;
}

EXPORT int32_t SherpaOnnxOnlineStreamIsEndpoint(const void *recogniser, const void *stream)
{
    (void)recogniser;
    (void)stream;
    return 0;
}

EXPORT void SherpaOnnxOnlineStreamReset(const void *recogniser, const void *stream)
{
    (void)recogniser;
    ((Stream *)stream)->decoded = ((Stream *)stream)->accepted;
}
