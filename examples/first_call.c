/* Opens a block model, tells its size and prints the values of its first blocks.
 *
 *     first_call model.csv
 */
#include <stdio.h>

#include <zolExportedApi_ReadOnly.h>

enum { TEXT_BYTES = 255, BLOCKS_SHOWN = 5 };

/* Every failed call leaves its reason behind: nothing else is needed to report it. */
static int fail(void) {
    char reason[TEXT_BYTES];
    ZOL_API_GetError(reason);
    fprintf(stderr, "first_call: %s\n", reason);
    return 1;
}

static int print_summary(BlockModelHandle* model) {
    double lower[3];
    double upper[3];
    const long long blocks = ZOL_BlockModel_NBlocks(model);
    if (blocks < 0) {
        return fail();
    }
    if (ZOL_BlockModel_GetModelExtent(model, &lower[0], &lower[1], &lower[2], &upper[0], &upper[1],
                                      &upper[2]) != 0) {
        return fail();
    }
    printf("blocks   %lld\n", blocks);
    printf("extent   %g %g %g to %g %g %g, in model coordinates\n", lower[0], lower[1], lower[2],
           upper[0], upper[1], upper[2]);
    return 0;
}

/* Prints each variable of the block under the cursor. GetString answers for numbers too:
 * as the shortest decimal that gives the same number of the variable's type. */
static int print_block(BlockModelHandle* model, int variables) {
    for (int index = 0; index < variables; ++index) {
        char name[TEXT_BYTES];
        char value[TEXT_BYTES];
        if (ZOL_BlockModel_GetVariableName(model, &index, name) != 0 ||
            ZOL_BlockModel_GetString(model, name, value) != 0) {
            return fail();
        }
        printf("  %s=%s", name, value);
    }
    printf("\n");
    return 0;
}

static int print_first_blocks(BlockModelHandle* model) {
    const int variables = ZOL_BlockModel_NVariables(model);
    if (variables < 0 || ZOL_BlockModel_FirstBlock(model) != 0) {
        return fail();
    }
    for (int shown = 0; shown < BLOCKS_SHOWN; ++shown) {
        /* Three answers: a block, the end, or -1 for a failure, which is not "true". */
        const int at_end = ZOL_BlockModel_IsEof(model);
        if (at_end < 0) {
            return fail();
        }
        if (at_end == 1) {
            break;
        }
        if (print_block(model, variables) != 0) {
            return 1;
        }
        if (ZOL_BlockModel_NextBlock(model) != 0) {
            return fail();
        }
    }
    return 0;
}

int main(int count, char** arguments) {
    if (count != 2) {
        fprintf(stderr, "usage: first_call <block model>\n");
        return 2;
    }
    ZOL_API_Init();
    BlockModelHandle* const model = ZOL_BlockModel_Open(arguments[1]);
    if (model == NULL) {
        return fail();
    }
    int status = print_summary(model);
    if (status == 0) {
        status = print_first_blocks(model);
    }
    /* The handle is ours until a close that succeeds. */
    if (ZOL_BlockModel_Close(model) != 0) {
        return fail();
    }
    return status;
}
