/*
 * Reads variables of a block model through the flat library, and says in one line of JSON
 * what it cost: the seconds of opening and of reading, and the process's greatest memory.
 *
 *   sum_column [--first-block] FILE [VARIABLE...]
 *
 * Without a variable all of them are read: numbers are summed, the bytes of texts counted.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>

#include "api/zolExportedApi_ReadOnly.h"

enum { BUFFER_BYTES = 255, MOST_VARIABLES = 64 };

typedef struct {
    char name[BUFFER_BYTES];
    int is_text;
} Variable;

static void fail(const char* what) {
    char text[BUFFER_BYTES];
    ZOL_API_GetError(text);
    fprintf(stderr, "sum_column: %s %s\n", what, text);
    exit(1);
}

static double seconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (double)now.tv_sec + 1e-9 * (double)now.tv_nsec;
}

/* Processor seconds of all threads so far. */
static double processor_seconds(const struct rusage* usage) {
    return (double)(usage->ru_utime.tv_sec + usage->ru_stime.tv_sec) +
           1e-6 * (double)(usage->ru_utime.tv_usec + usage->ru_stime.tv_usec);
}

static int list_variables(BlockModelHandle* model, Variable* variables) {
    const int count = ZOL_BlockModel_NVariables(model);
    if (count > MOST_VARIABLES) fail("too many variables");
    for (int i = 0; i < count; ++i) {
        ZOL_BlockModel_GetVariableName(model, &i, variables[i].name);
    }
    return count;
}

int main(int argc, char** argv) {
    static Variable variables[MOST_VARIABLES];
    int first_block_only = 0;
    if (argc > 1 && strcmp(argv[1], "--first-block") == 0) {
        first_block_only = 1;
        --argc;
        ++argv;
    }
    if (argc < 2 || argc - 2 > MOST_VARIABLES) {
        fprintf(stderr, "usage: sum_column [--first-block] FILE [VARIABLE...]\n");
        return 2;
    }

    ZOL_API_Init();
    const double start = seconds();
    BlockModelHandle* model = ZOL_BlockModel_Open(argv[1]);
    if (model == NULL) fail("");
    const double opened = seconds();

    int count = argc - 2;
    for (int i = 0; i < count; ++i) {
        snprintf(variables[i].name, BUFFER_BYTES, "%s", argv[i + 2]);
    }
    if (count == 0) count = list_variables(model, variables);
    for (int i = 0; i < count; ++i) {
        variables[i].is_text = ZOL_BlockModel_IsString(model, variables[i].name) == 1;
    }

    double sum = 0.0;
    long long blocks = 0;
    long long text_bytes = 0;
    ZOL_BlockModel_FirstBlock(model);
    while (ZOL_BlockModel_IsEof(model) == 0) {
        for (int i = 0; i < count; ++i) {
            if (variables[i].is_text) {
                char text[BUFFER_BYTES];
                ZOL_BlockModel_GetString(model, variables[i].name, text);
                text_bytes += (long long)strlen(text);
            } else {
                double value;
                ZOL_BlockModel_GetNumber(model, variables[i].name, &value);
                if (value == value) sum += value;
            }
        }
        ++blocks;
        if (first_block_only) break;
        ZOL_BlockModel_NextBlock(model);
    }
    const double read = seconds();
    if (ZOL_BlockModel_Close(model) != 0) fail("");

    struct rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    printf(
        "{\"open_s\": %.6f, \"read_s\": %.6f, \"cpu_s\": %.6f, \"peak_mb\": %.1f, "
        "\"blocks\": %lld, \"variables\": %d, \"sum\": %.17g, \"text_bytes\": %lld}\n",
        opened - start, read - opened, processor_seconds(&usage), (double)usage.ru_maxrss / 1024.0,
        blocks, count, sum, text_bytes);
    return 0;
}
