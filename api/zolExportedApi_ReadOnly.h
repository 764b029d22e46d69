/*
 * Block models, design databases, triangulations and grids read through flat functions.
 *
 * Life cycle: call ZOL_API_Init once, then open, read and close. Before that every
 * guarded function fails with "ZOL_API not initialised.". There is no shut-down call. The
 * library changes no data file.
 *
 * Ownership: a handle is owned by the caller from the function that made it to
 * the Close of its family. A closed handle must not be used again: that is not detected.
 * All other pointers are borrowed for the call.
 *
 * Threads: none of this is locked. Use the library from one thread at a time, and keep
 * a failed call together with its ZOL_API_GetError.
 *
 *   Kind of function                    success           failed   not initialised
 *   status (results go out by pointer)  0                 1        -1
 *   predicate (Is..., Has...)           1 true, 0 false   -1       -1
 *   count (N...)                        the count         -1       -1
 *   64-bit result                       the value         -1       -1
 *   double result                       the value         -1.0     -1.0
 *   handle                              a new handle      NULL     NULL
 *
 * A function that departs from this table says so. A predicate's -1 is not true: compare
 * with 1.
 *
 * Errors: all functions but those with the prefix ZOL_API_ are guarded. A guarded call that
 * fails puts a text in the one last-error slot, and one that succeeds empties it.
 *
 * Exceptions: nothing is caught. When memory runs out, std::bad_alloc passes through any
 * guarded call, ZOL_API_StartLogging and ZOL_API_SetErrorMessage to the caller, and ends a
 * program of plain C. The engine throws nothing else; what a library in its place throws
 * passes through in the same way. The last-error slot is then as it was, or empty
 * already. The other functions throw nothing.
 *
 * Arguments: every scalar goes by pointer, inputs too; indices count from 0; no pointer
 * but the handle is tested for NULL. Out-parameters are written on success only, unless
 * said otherwise. Text goes in as a NUL-terminated string of bytes, and out to a buffer
 * of 255 bytes, whose size is not passed: all 255 are written, a text of more than 254
 * bytes is cut, the rest is NUL.
 */
#ifndef ZOL_EXPORTED_API_READ_ONLY_H
#define ZOL_EXPORTED_API_READ_ONLY_H

#if defined(_WIN32)
#if defined(ZOL_BUILDING_LIBRARY)
#define ZOL_EXPORTED __declspec(dllexport)
#else
#define ZOL_EXPORTED __declspec(dllimport)
#endif
#else
#define ZOL_EXPORTED __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** An open block model. */
typedef struct BlockModelHandle BlockModelHandle;

/** An open design database. */
typedef struct DatabaseHandle DatabaseHandle;

/** A layer of a design database. */
typedef struct LayerHandle LayerHandle;

/** An object of a layer. */
typedef struct ObjectHandle ObjectHandle;

/** An open triangulation. */
typedef struct TriangulationHandle TriangulationHandle;

/** An open grid. */
typedef struct GridHandle GridHandle;

/* ---- The library itself ------------------------------------------------------------
 * These work at any time, before initialisation too, and are not in the call log.
 */

/**
 * Initialises the library. May be called again, to no effect; leaves a pending error.
 * Results:
 *   0   always
 */
ZOL_EXPORTED int ZOL_API_Init(void);

/**
 * Copies the pending error text; an empty text when there is none. The error stays
 * pending.
 * buffer    out, 255 bytes, all written; the text is cut at 254
 */
ZOL_EXPORTED void ZOL_API_GetError(char* buffer);

/**
 * Tells whether an error is pending. Besides a guarded call that failed,
 * ZOL_API_SetErrorMessage leaves one.
 * Results:
 *   1   an error is pending
 *   0   none is
 */
ZOL_EXPORTED int ZOL_API_HasError(void);

/**
 * Starts the call log: a text file with one line per successful call. Does nothing
 * while a log is running, under whatever name. A file that can't be opened is not
 * reported; nothing is written then.
 * file_name in, the file is created or cut to nothing. Borrowed for this call.
 */
ZOL_EXPORTED void ZOL_API_StartLogging(const char* file_name);

/**
 * Ends the call log with a summary of time and calls per function, and closes its
 * file. Does nothing while no log is running.
 */
ZOL_EXPORTED void ZOL_API_FinishLogging(void);

/* ---- Block models: open and close ------------------------------------------------- */

/**
 * Opens a block model for reading: delimited text, with or without a JSON sidecar, GEO-EAS,
 * or a volume of OMF version 1. Why a file does not open is told on the diagnostics channel,
 * which the environment variable ZOL_DIAGNOSTICS turns on (docs/diagnostics.md).
 * file_name in, the name of the file; "file#element" picks one element of a file that holds
 *           several, and without "#" the first is taken. A file of the whole name goes
 *           before an element. Borrowed for this call.
 * Results:
 *   a handle  Owned by the caller; end with ZOL_BlockModel_Close
 *   NULL      "ZOL_BlockModel_Open error opening/loading <file_name>", the name exactly as
 *             passed
 *   NULL      "ZOL_API not initialised."
 */
ZOL_EXPORTED BlockModelHandle* ZOL_BlockModel_Open(const char* file_name);

/**
 * Closes a block model and ends its handle.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   closed; the handle is gone
 *   1   "ZOL_BlockModel_Close no model currently open."
 *   1   "ZOL_BlockModel_Close error closing <name of the model>"; the handle stays and may
 *       be closed again, its match is closed
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_Close(BlockModelHandle* handle);

/**
 * Tells whether a handle stands for an open model.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   open
 *   0   not open, or a NULL handle
 *   -1  "ZOL_API not initialised."
 * Departure: a NULL handle is an answer here, not a failure.
 */
ZOL_EXPORTED int ZOL_BlockModel_IsOpen(BlockModelHandle* handle);

/* ---- Block models: the model as a whole -------------------------------------------
 * Model coordinates run along the rows of blocks from the model's lower corner. The
 * orientation is three angles a, b, c in degrees, right-handed: a turn about z, then about
 * the new y, then about the new x, all 0 for an unrotated model. A point in the model lies
 * in the world at
 *
 *     world = origin + Rz(a) Ry(b) Rx(c) model
 *
 *             | cos a  -sin a   0 |           |  cos b  0  sin b |
 *     Rz(a) = | sin a   cos a   0 |   Ry(b) = |    0    1    0   |
 *             |   0       0     1 |           | -sin b  0  cos b |
 *
 *             | 1    0       0    |
 *     Rx(c) = | 0  cos c  -sin c  |
 *             | 0  sin c   cos c  |
 *
 * An extent is a box in model coordinates: lower x, y, z, then upper x, y, z. Lengths are in
 * the unit of the file.
 */

/**
 * The box of the whole model.
 * handle    in. Borrowed for this call.
 * lower_*   out, lower corner in model coordinates
 * upper_*   out, upper corner
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetModelExtent no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: all outputs are set to 0.0 ahead of the test of the handle, so that a failed
 * test leaves zeros.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetModelExtent(BlockModelHandle* handle, double* lower_x,
                                               double* lower_y, double* lower_z, double* upper_x,
                                               double* upper_y, double* upper_z);

/**
 * The world coordinates of the model's origin.
 * handle    in. Borrowed for this call.
 * x, y, z   out, world coordinates
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetModelOrigin no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: all outputs are set to 0.0 ahead of the test of the handle, so that a failed
 * test leaves zeros.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetModelOrigin(BlockModelHandle* handle, double* x, double* y,
                                               double* z);

/**
 * The three angles by which the model is turned: a, b, c of the formula above.
 * handle    in. Borrowed for this call.
 * about_*   out, degrees, right-handed
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetModelOrientation no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: all outputs are set to 0.0 ahead of the test of the handle, so that a failed
 * test leaves zeros.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetModelOrientation(BlockModelHandle* handle, double* about_z,
                                                    double* about_y, double* about_x);

/**
 * Converts a point from model to world coordinates, by the formula above.
 * handle    in. Borrowed for this call.
 * model_*   in, model coordinates
 * world_*   out, world coordinates
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_ModelToWorld no model currently open."
 *   -1  "ZOL_API not initialised."
 * The outputs are set to 0.0 before the inputs are read: with the same variables for both,
 * the point (0, 0, 0) is converted.
 */
ZOL_EXPORTED int ZOL_BlockModel_ModelToWorld(BlockModelHandle* handle, const double* model_x,
                                             const double* model_y, const double* model_z,
                                             double* world_x, double* world_y, double* world_z);

/**
 * Converts a point from world to model coordinates, the inverse of
 * ZOL_BlockModel_ModelToWorld.
 * handle    in. Borrowed for this call.
 * world_*   in, world coordinates
 * model_*   out, model coordinates
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_WorldToModel no model currently open."
 *   -1  "ZOL_API not initialised."
 * The outputs are set to 0.0 before the inputs are read: with the same variables for both,
 * the point (0, 0, 0) is converted.
 */
ZOL_EXPORTED int ZOL_BlockModel_WorldToModel(BlockModelHandle* handle, const double* world_x,
                                             const double* world_y, const double* world_z,
                                             double* model_x, double* model_y, double* model_z);

/**
 * Tells whether the file says that its model is stratigraphic.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is not, or the file says nothing
 *   -1  "ZOL_BlockModel_IsStratigraphicModel no model currently open."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_IsStratigraphicModel(BlockModelHandle* handle);

/**
 * The number of blocks.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NBlocks no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED long long ZOL_BlockModel_NBlocks(BlockModelHandle* handle);

/* ---- Block models: schemas --------------------------------------------------------
 * A schema is a way in which blocks are laid out: the lattice of parent blocks is the first,
 * the lattices of sub-blocks follow. The ones that the file states are original, the others
 * were derived from the blocks. Callers see original schemas only: a schema index counts
 * those.
 */

/**
 * The number of original schemas. The first schema counts as original in any case, so the
 * count is never 0. The three functions below do ask it: where it is not original, the last
 * index below the count finds nothing.
 * handle    in. Borrowed for this call.
 * Results:
 *   1...  the count
 *   -1    "ZOL_BlockModel_NSchemas no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NSchemas(BlockModelHandle* handle);

/**
 * The box that a schema covers.
 * handle    in. Borrowed for this call.
 * index     in, schema index, from 0
 * lower_*   out, lower corner in model coordinates
 * upper_*   out, upper corner
 * Results:
 *   0   success
 *   1   no original schema has this index: outputs untouched, no error pending, and the
 *       call counts as successful
 *   1   "ZOL_BlockModel_GetSchemaExtent no model currently open."
 *   1   "ZOL_BlockModel_GetSchemaExtent Invalid index.", for an index below 0 or not below
 *       the number of all schemas
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetSchemaExtent(BlockModelHandle* handle, const int* index,
                                                double* lower_x, double* lower_y, double* lower_z,
                                                double* upper_x, double* upper_y, double* upper_z);

/**
 * The numbers of blocks along the axes of a schema.
 * handle    in. Borrowed for this call.
 * index     in, schema index, from 0
 * x, y, z   out, whole numbers
 * Results:
 *   0   success
 *   1   no original schema has this index: outputs untouched, no error pending, and the
 *       call counts as successful
 *   1   "ZOL_BlockModel_GetSchemaDimensions no model currently open."
 *   1   "ZOL_BlockModel_GetSchemaDimensions Invalid index.", for an index below 0 or not
 *       below the number of all schemas
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetSchemaDimensions(BlockModelHandle* handle, const int* index,
                                                    double* x, double* y, double* z);

/**
 * The least and the greatest size of a block of a schema.
 * handle    in. Borrowed for this call.
 * index     in, schema index, from 0
 * least_*   out, least size along each axis
 * greatest_* out, greatest size along each axis
 * Results:
 *   0   success
 *   1   no original schema has this index: outputs untouched, no error pending, and the
 *       call counts as successful
 *   1   "ZOL_BlockModel_GetSchemaSizes no model currently open."
 *   1   "ZOL_BlockModel_GetSchemaSizes Invalid index.", for an index below 0 or not below
 *       the number of all schemas
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetSchemaSizes(BlockModelHandle* handle, const int* index,
                                               double* least_x, double* least_y, double* least_z,
                                               double* greatest_x, double* greatest_y,
                                               double* greatest_z);

/* ---- Block models: variables ------------------------------------------------------
 * Every block carries a value of each variable. Five lists give their names, in an order
 * that stays the same while the model is open.
 *
 * A classification is a numeric variable with a table of names for its codes:
 * ZOL_BlockModel_IsNumber says 1 of it and ZOL_BlockModel_IsString 0. Its number is the code,
 * its text the name. A code without a name has its decimal for a text. A word of the file
 * that is not in the table is the text as it stands, and for a number the default, or NaN.
 *
 * Unknown names are no failure: a variable that the model does not have is no number and no
 * string, has the type code 0, NaN for its default number, empty texts and no translations.
 */

/**
 * The number of the file's own variables.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NVariables no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NVariables(BlockModelHandle* handle);

/**
 * The name of one of the file's own variables.
 * handle    in. Borrowed for this call.
 * index     in, from 0, below ZOL_BlockModel_NVariables
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetVariableName no model currently open."
 *   1   "ZOL_BlockModel_GetVariableName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetVariableName(BlockModelHandle* handle, const int* index,
                                                char* buffer);

/**
 * The number of the predefined variables. These are computed for every model: centroid_x,
 * centroid_y, centroid_z, size_x, size_y, size_z, volume and block_index.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NPredefinedVariables no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NPredefinedVariables(BlockModelHandle* handle);

/**
 * The name of one of the predefined variables.
 * handle    in. Borrowed for this call.
 * index     in, from 0, below ZOL_BlockModel_NPredefinedVariables
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetPredefinedVariableName no model currently open."
 *   1   "ZOL_BlockModel_GetPredefinedVariableName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetPredefinedVariableName(BlockModelHandle* handle,
                                                          const int* index, char* buffer);

/**
 * The number of the classification variables.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NClassificationVariables no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NClassificationVariables(BlockModelHandle* handle);

/**
 * The name of one of the classification variables.
 * handle    in. Borrowed for this call.
 * index     in, from 0, below ZOL_BlockModel_NClassificationVariables
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetClassificationVariableName no model currently open."
 *   1   "ZOL_BlockModel_GetClassificationVariableName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetClassificationVariableName(BlockModelHandle* handle,
                                                              const int* index, char* buffer);

/**
 * The number of the numeric variables. These are those of the file's own that have a
 * number.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NNumericVariables no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NNumericVariables(BlockModelHandle* handle);

/**
 * The name of one of the numeric variables.
 * handle    in. Borrowed for this call.
 * index     in, from 0, below ZOL_BlockModel_NNumericVariables
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetNumericVariableName no model currently open."
 *   1   "ZOL_BlockModel_GetNumericVariableName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetNumericVariableName(BlockModelHandle* handle, const int* index,
                                                       char* buffer);

/**
 * The number of the string variables. These are those of the file's own that are texts.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NStringVariables no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NStringVariables(BlockModelHandle* handle);

/**
 * The name of one of the string variables.
 * handle    in. Borrowed for this call.
 * index     in, from 0, below ZOL_BlockModel_NStringVariables
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetStringVariableName no model currently open."
 *   1   "ZOL_BlockModel_GetStringVariableName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetStringVariableName(BlockModelHandle* handle, const int* index,
                                                      char* buffer);

/**
 * The number of names in the table of a classification; 0 for any other variable.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * Results:
 *   0...  the count
 *   -1    "ZOL_BlockModel_NTranslations no model currently open."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_NTranslations(BlockModelHandle* handle, const char* variable);

/**
 * A name in the table of a classification, in the order of codes.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * index     in, from 0, below ZOL_BlockModel_NTranslations
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetTranslationName no model currently open."
 *   1   "ZOL_BlockModel_GetTranslationName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetTranslationName(BlockModelHandle* handle, const char* variable,
                                                   const int* index, char* buffer);

/**
 * The description of a variable; an empty text when there is none.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetDescription no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: its error text names ZOL_BlockModel_GetDescription, which does not exist.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetVariableDescription(BlockModelHandle* handle,
                                                       const char* variable, char* buffer);

/**
 * The type of a variable, as a code: 0 not known, 1 bit, 2 byte, 3 short, 4 sfloat (half
 * precision), 5 integer (32 bits), 6 int64, 7 float, 8 double or any predefined variable, 9
 * string.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * type      out, the code
 * Results:
 *   0   success
 *   -1  "ZOL_BlockModel_GetVariableType no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: a failed test of the handle gives -1, not 1.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetVariableType(BlockModelHandle* handle, const char* variable,
                                                int* type);

/**
 * The default value of a variable as a number, which stands for a missing value: of a
 * classification the code. NaN when the file states none, for a text variable, for a
 * predefined one and for an unknown name.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * number    out
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetDefaultNumber no model currently open."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetDefaultNumber(BlockModelHandle* handle, const char* variable,
                                                 double* number);

/**
 * The default value of a variable as a text, which stands for a missing value: of a number
 * its decimal ("-99"), of a classification the name of the code ("WASTE"). Empty when the
 * file states none, for a predefined variable and for an unknown name.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * buffer    out, 255 bytes, all written; the text is cut at 255
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetDefaultString no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: a text of 255 bytes or more fills the buffer and leaves no NUL at its end.
 */
ZOL_EXPORTED int ZOL_BlockModel_GetDefaultString(BlockModelHandle* handle, const char* variable,
                                                 char* buffer);

/**
 * Tells whether a variable is numeric.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * Results:
 *   1   it is
 *   0   it is not, or there is no such variable
 *   -1  "ZOL_BlockModel_IsNumber no model currently open."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_IsNumber(BlockModelHandle* handle, const char* variable);

/**
 * Tells whether a variable is a text.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * Results:
 *   1   it is
 *   0   it is not, or there is no such variable
 *   -1  "ZOL_BlockModel_IsString no model currently open."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_IsString(BlockModelHandle* handle, const char* variable);

/* ---- Block models: the cursor -----------------------------------------------------
 * A handle has one cursor; a new handle stands on the first block. The walk over all blocks
 * is ZOL_BlockModel_FirstBlock, then ZOL_BlockModel_NextBlock until ZOL_BlockModel_IsEof says
 * 1; test it before each read.
 *
 * Past the end, a number is NaN, a text empty and an extent all 0.0. A missing value is the
 * variable's default, and without one NaN or the empty text; so is the value of a variable
 * that the model does not have.
 */

/**
 * Moves to the first block.
 * handle    in. Borrowed for this call.
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_FirstBlock no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 * A model without blocks is no failure: ask ZOL_BlockModel_IsEof.
 */
ZOL_EXPORTED int ZOL_BlockModel_FirstBlock(BlockModelHandle* handle);

/**
 * Moves to the next block; past the last one, to the end, and there it stays.
 * handle    in. Borrowed for this call.
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_NextBlock no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 * Running off the end is no failure: ask ZOL_BlockModel_IsEof.
 */
ZOL_EXPORTED int ZOL_BlockModel_NextBlock(BlockModelHandle* handle);

/**
 * Tells whether the cursor is past the last block.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it stands on a block
 *   -1  "ZOL_BlockModel_IsEof no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_IsEof(BlockModelHandle* handle);

/**
 * Where the cursor stands, for ZOL_BlockModel_SetPosition. The number has no other use.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the position
 *   -1    "ZOL_BlockModel_GetPosition no model currently open or blocks matched."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED long long ZOL_BlockModel_GetPosition(BlockModelHandle* handle);

/**
 * The value of a variable in the current block. For a classification it is the code; for a
 * text it is NaN. A value that can no longer be read, since the file was changed while it
 * was open or its column turns out corrupt, is NaN too and never the default; no error is
 * pending, and the diagnostics channel gets one line.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * number    out
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetNumber no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetNumber(BlockModelHandle* handle, const char* variable,
                                          double* number);

/**
 * The text of a variable in the current block. For a classification it is the name; for a
 * number it is the shortest decimal that gives the same number of the variable's type, so
 * that of a float it may be shorter than its double needs. A value that can no longer be
 * read, as told at ZOL_BlockModel_GetNumber, is the empty text.
 * handle    in. Borrowed for this call.
 * variable  in, name of a variable
 * buffer    out, 255 bytes, all written; the text is cut at 254
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetString no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetString(BlockModelHandle* handle, const char* variable,
                                          char* buffer);

/**
 * The box of the current block.
 * handle    in. Borrowed for this call.
 * lower_*   out, lower corner in model coordinates
 * upper_*   out, upper corner
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetBlockExtent no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetBlockExtent(BlockModelHandle* handle, double* lower_x,
                                               double* lower_y, double* lower_z, double* upper_x,
                                               double* upper_y, double* upper_z);

/**
 * Moves to a position; one that the model does not have is past the end.
 * handle    in. Borrowed for this call.
 * position  in, from ZOL_BlockModel_GetPosition
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_SetPosition no model currently open."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_SetPosition(BlockModelHandle* handle, const long long* position);

/**
 * Moves to the block at a point in model coordinates; when there is none, the cursor stays.
 * A point on a shared face belongs to the block above it on that axis, the upper faces of
 * the model to the last block.
 * handle    in. Borrowed for this call.
 * x, y, z   in, model coordinates
 * Results:
 *   0   found
 *   1   not found; no error is pending
 *   -1  "ZOL_BlockModel_FindXyz no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: a failed test of the handle gives -1, not 1.
 */
ZOL_EXPORTED int ZOL_BlockModel_FindXyz(BlockModelHandle* handle, const double* x, const double* y,
                                        const double* z);

/**
 * Moves to the block at a point in world coordinates; otherwise as ZOL_BlockModel_FindXyz.
 * handle    in. Borrowed for this call.
 * x, y, z   in, world coordinates
 * Results:
 *   0   found
 *   1   not found, as any value but 0; no error is pending
 *   -1  "ZOL_BlockModel_FindWorldXyz no model currently open."
 *   -1  "ZOL_API not initialised."
 * Departure: the value is passed on as the search gave it, not folded to 0 and 1. A failed
 * test of the handle gives -1, not 1.
 */
ZOL_EXPORTED int ZOL_BlockModel_FindWorldXyz(BlockModelHandle* handle, const double* x,
                                             const double* y, const double* z);

/* ---- Block models: matching -------------------------------------------------------
 * A match narrows the walk to the blocks that triangulations and an extent select. Any of
 * the three settings starts one; from then on the functions of the cursor speak of the
 * match, which has a cursor of its own: set, then ZOL_BlockModel_FirstBlock, walk, and
 * ZOL_BlockModel_ClearMatch. ZOL_BlockModel_SetPosition, ZOL_BlockModel_FindXyz and
 * ZOL_BlockModel_FindWorldXyz end a match, too. A match that has ended forgets its settings.
 *
 * Selected is what lies in any of the triangulations, cut by the extent. A closed
 * triangulation selects what is inside of it, an open one what lies vertically below it in
 * the model. Without triangulations the extent alone selects, and without either everything
 * does. A block matches when its centroid is selected, and in an exact match when a part of
 * it is, of more than a billionth of its volume.
 *
 * The match is made when its cursor first moves; until then it stands past the end. It
 * streams: it holds no list of blocks. A setting that comes during a walk takes effect at
 * the next ZOL_BlockModel_FirstBlock.
 */

/**
 * Adds a triangulation to the match, and starts one if there is none.
 * handle     in. Borrowed for this call.
 * file_name  in, one of the formats of ZOL_Triangulation_Open; in world coordinates
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_AddMatchTriangulation no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 * The file is read when the match is made. That it can't be read is no failure: it selects
 * nothing, and the diagnostics channel tells why.
 */
ZOL_EXPORTED int ZOL_BlockModel_AddMatchTriangulation(BlockModelHandle* handle,
                                                      const char* file_name);

/**
 * Sets the extent of the match, and starts one if there is none. The latest counts.
 * handle         in. Borrowed for this call.
 * lower_x, ...   in, least x, y, z, then greatest x, y, z, in model coordinates
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_SetMatchExtent no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 * Nothing tests the numbers: an extent without room in it selects nothing. A centroid on its
 * upper faces lies outside of it, one on its lower faces inside.
 */
ZOL_EXPORTED int ZOL_BlockModel_SetMatchExtent(BlockModelHandle* handle, const double* lower_x,
                                               const double* lower_y, const double* lower_z,
                                               const double* upper_x, const double* upper_y,
                                               const double* upper_z);

/**
 * Tells whether parts of blocks match, and starts a match if there is none.
 * handle  in. Borrowed for this call.
 * exact   in, 1 for an exact match; any other value for one by centroids, as it is at first
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_SetUseExactVolume no model currently open or blocks matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_SetUseExactVolume(BlockModelHandle* handle, const int* exact);

/**
 * Ends the match: the cursor is that of the model again.
 * handle  in. Borrowed for this call.
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_ClearMatch no blocks currently matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_ClearMatch(BlockModelHandle* handle);

/**
 * The extent, in model coordinates, of what matches of the block under the cursor: the whole
 * block, or in an exact match the least box around the part that is selected. All 0.0 past
 * the end.
 * handle         in. Borrowed for this call.
 * lower_x, ...   out, least x, y, z, then greatest x, y, z
 * Results:
 *   0   success
 *   1   "ZOL_BlockModel_GetBlockMatchExtent no blocks currently matched."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_BlockModel_GetBlockMatchExtent(BlockModelHandle* handle, double* lower_x,
                                                    double* lower_y, double* lower_z,
                                                    double* upper_x, double* upper_y,
                                                    double* upper_z);

/**
 * The volume of what matches of the block under the cursor: that of the whole block, or in
 * an exact match that of the part that is selected, computed and not sampled. Where
 * triangulations overlap, it counts once. 0.0 past the end.
 * handle  in. Borrowed for this call.
 * Results:
 *   the volume
 *   -1.0  "ZOL_BlockModel_GetBlockMatchVolume no blocks currently matched."
 *   -1.0  "ZOL_API not initialised."
 * Formula: by the divergence theorem for the field (0, 0, z); the union of solids whose
 * surfaces cross in the block by cutting its plan into trapezoids.
 */
ZOL_EXPORTED double ZOL_BlockModel_GetBlockMatchVolume(BlockModelHandle* handle);

/* ---- Design databases -------------------------------------------------------------
 * A design database holds layers, and a layer holds objects: polylines, texts, arrows and
 * dimensions. A handle of each has its own Close, and they may be closed in any order: a
 * layer or an object owns what it answers from.
 *
 * Callers see layers by their index in the catalogue: the list of layers in the order of the
 * source, less those that are hidden. Hidden are layers whose name is empty, begins with a
 * dollar sign, or begins with "DIG$". By name they can be had all the same.
 */

/**
 * Opens a design database for reading, from one of the formats of docs/formats. Its colours
 * are the ones that ZOL_Object_GetColour answers with from now on, for objects of other
 * databases too.
 * file_name in, the name of the file, or the connection string of a server. Borrowed for this
 *           call.
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Database_Close
 *   NULL      the reasons of the reader, with a line feed between two
 *   NULL      "ZOL_Database_Open Error opening database <file_name>", the name exactly as
 *             passed, where the reader gives no reason
 *   NULL      "ZOL_API not initialised."
 * Departure: the reasons do not begin with the name of the function, and do not replace a
 * pending error but are appended to it, with nothing in between.
 */
ZOL_EXPORTED DatabaseHandle* ZOL_Database_Open(const char* file_name);

/**
 * Closes a design database and ends its handle. Layers and objects got from it stay. The
 * colours of the database opened last are forgotten, whichever database is closed:
 * ZOL_Object_GetColour answers from the default palette until the next one is opened.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   closed; the handle is gone
 *   1   "ZOL_Database_Close Database not defined."
 *   1   "ZOL_Database_Close error closing <name of the database>"; the handle stays and may
 *       be closed again, and so do the colours
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_Close(DatabaseHandle* handle);

/**
 * Tells whether the database behind a handle is open. After a ZOL_Database_Close that failed
 * it may be closed already.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is not, though the handle is alive
 *   -1  "ZOL_Database_IsOpen Database not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_IsOpen(DatabaseHandle* handle);

/**
 * The name of a database: that by which it was opened.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Database_GetName Database not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_GetName(DatabaseHandle* handle, char* buffer);

/**
 * The number of layers in the catalogue.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_Database_NLayers Database not defined."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_NLayers(DatabaseHandle* handle);

/**
 * Tells whether a database has a layer of this name, hidden or not. Blanks round the name
 * count, unlike in ZOL_Database_GetLayerByName; in a drawing the case of A to Z does not.
 * handle    in. Borrowed for this call.
 * name      in. Borrowed for this call.
 * Results:
 *   1   it has
 *   0   it has not
 *   -1  "ZOL_Database_LayerExists Database not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_LayerExists(DatabaseHandle* handle, const char* name);

/**
 * The name of a layer of the catalogue.
 * handle    in. Borrowed for this call.
 * index     in, catalogue index, from 0
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Database_GetLayerNameByIndex Database not defined."
 *   1   "ZOL_Database_GetLayerNameByIndex Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Database_GetLayerNameByIndex(DatabaseHandle* handle, const int* index,
                                                  char* buffer);

/**
 * A layer of the catalogue.
 * handle    in. Borrowed for this call.
 * index     in, catalogue index, from 0
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Layer_Close
 *   NULL      "ZOL_Database_GetLayerByIndex Database not defined."
 *   NULL      "ZOL_Database_GetLayerByIndex Invalid index."
 *   NULL      "ZOL_Database_GetLayerByIndex Error retrieving layer <byte>", where the layer
 *             can't be read
 *   NULL      "ZOL_API not initialised."
 * Departure: the last text ends in the low eight bits of the index as a single byte, not in
 * digits: index 65 ends it in the letter A, and index 0 in a NUL.
 */
ZOL_EXPORTED LayerHandle* ZOL_Database_GetLayerByIndex(DatabaseHandle* handle, const int* index);

/**
 * A layer by its name, hidden or not. Blanks round the name don't count, nor, in a drawing,
 * the case of A to Z.
 * handle    in. Borrowed for this call.
 * name      in. Borrowed for this call.
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Layer_Close
 *   NULL      "ZOL_Database_GetLayerByName Database not defined."
 *   NULL      "ZOL_Database_GetLayerByName Error retrieving layer <name>", the name exactly
 *             as passed
 *   NULL      "ZOL_API not initialised."
 */
ZOL_EXPORTED LayerHandle* ZOL_Database_GetLayerByName(DatabaseHandle* handle, const char* name);

/* ---- Layers ----------------------------------------------------------------------- */

/**
 * Ends the handle of a layer. Objects got from it stay.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   the handle is gone
 *   -1  "ZOL_Layer_Close Layer not defined."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, where ZOL_Database_Close fails with 1.
 */
ZOL_EXPORTED int ZOL_Layer_Close(LayerHandle* handle);

/**
 * The name of a layer.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Layer_GetName Layer not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Layer_GetName(LayerHandle* handle, char* buffer);

/**
 * What the source says of a layer; empty when it says nothing.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Layer_GetDescription Layer not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Layer_GetDescription(LayerHandle* handle, char* buffer);

/**
 * Tells whether a layer was changed since it was read.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it was
 *   0   it was not
 *   -1  "ZOL_Layer_IsEdited Layer not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Layer_IsEdited(LayerHandle* handle);

/**
 * The number of objects in a layer.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_Layer_NObjects Layer not defined."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Layer_NObjects(LayerHandle* handle);

/**
 * An object of a layer. Each call makes a handle of its own. An object that could not be read
 * is handed out too: ZOL_Object_GetType fails on it and says why.
 * handle    in. Borrowed for this call.
 * index     in, from 0, in the order of the source
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Object_Close
 *   NULL      "ZOL_Layer_GetObject Layer not defined."
 *   NULL      "ZOL_Layer_GetObject Invalid index."
 *   NULL      "ZOL_API not initialised."
 */
ZOL_EXPORTED ObjectHandle* ZOL_Layer_GetObject(LayerHandle* handle, const int* index);

/* ---- Objects of every kind -------------------------------------------------------- */

/**
 * Ends the handle of an object.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   the handle is gone
 *   -1  "ZOL_Object_Close Object not defined."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, as ZOL_Layer_Close does.
 */
ZOL_EXPORTED int ZOL_Object_Close(ObjectHandle* handle);

/**
 * Of what kind an object is, and whether it could be read whole.
 * handle    in. Borrowed for this call.
 * type      out: 1 polyline, 2 text, 3 3D text, 4 arrow; dimensions: 5 line, 6 radius, 7 arc,
 *           8 angle; 0 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetType Object not defined."; type stays
 *   1   "ZOL_Object_GetType <what is wrong with the object>"; type is written all the same
 *   -1  "ZOL_API not initialised."; type stays
 */
ZOL_EXPORTED int ZOL_Object_GetType(ObjectHandle* handle, int* type);

/**
 * The name of an object; where the source gives none, its handle or number in the source.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetName Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetName(ObjectHandle* handle, char* buffer);

/**
 * What the source says of an object; empty when it says nothing.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetDescription Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetDescription(ObjectHandle* handle, char* buffer);

/**
 * What an object shows, as the source names it; where it does not, the name of the block that
 * the object is from, or empty.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetFeature Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetFeature(ObjectHandle* handle, char* buffer);

/**
 * The group that an object belongs to; empty when there is none.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetGroup Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetGroup(ObjectHandle* handle, char* buffer);

/**
 * What the source calls this kind of object, such as "LWPOLYLINE".
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetPrimitive Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetPrimitive(ObjectHandle* handle, char* buffer);

/**
 * The number that the source gives to an object; where it gives none, its elevation.
 * handle    in. Borrowed for this call.
 * value     out
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetValue Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetValue(ObjectHandle* handle, double* value);

/**
 * The colour of an object as a position in the colour table of its database.
 * handle    in. Borrowed for this call.
 * index     out, as the database has it, also where its table has no such position
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetColourIndex Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetColourIndex(ObjectHandle* handle, int* index);

/**
 * The colour of an object: its colour index looked up in the one table of colours, that of
 * the database opened last, which need not be the one that the object is from. Where that
 * database has no table, or after any database was closed, it is looked up in the default
 * palette of 256 colours.
 * handle    in. Borrowed for this call.
 * red, green, blue out, each 0 to 255; black for an index that the table does not have
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetColour Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetColour(ObjectHandle* handle, int* red, int* green, int* blue);

/* ---- Metadata of objects ----------------------------------------------------------
 * The fields of an object that have no function of their own, by name and by position from 0.
 * Objects of every kind may have some.
 *
 * Unlike elsewhere the pointers named below are tested for NULL, behind the handle. The three
 * functions that copy a text write 254 bytes of the buffer: the text cut at 254 bytes, then
 * NUL. The last byte stays as it was, so that a text of 254 bytes or more has no terminator:
 * set byte 254 to NUL beforehand.
 */

/**
 * Tells whether an object has metadata fields.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it has
 *   0   it has not
 *   -1  "ZOL_Object_HasMetadata Object not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_HasMetadata(ObjectHandle* handle);

/**
 * The number of metadata fields of an object.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_Object_NMetadataFields Object not defined."
 *   -1    "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_NMetadataFields(ObjectHandle* handle);

/**
 * Tells whether an object has a metadata field of this name.
 * handle    in. Borrowed for this call.
 * name      in, not NULL. Borrowed for this call.
 * Results:
 *   1   it has
 *   0   it has not
 *   -1  "ZOL_Object_HasMetadataField Object not defined."
 *   -1  "ZOL_Object_HasMetadataField Received a null pointer."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_HasMetadataField(ObjectHandle* handle, const char* name);

/**
 * The position of a metadata field.
 * handle    in. Borrowed for this call.
 * name      in, not NULL. Borrowed for this call.
 * index     out, from 0; not NULL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetMetadataFieldIndex Object not defined."
 *   1   "ZOL_Object_GetMetadataFieldIndex Received a null pointer."
 *   1   "ZOL_Object_GetMetadataFieldIndex Field not found."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetMetadataFieldIndex(ObjectHandle* handle, const char* name,
                                                  int* index);

/**
 * The name of the metadata field at a position.
 * handle    in. Borrowed for this call.
 * index     in, from 0
 * buffer    out, 255 bytes, of which 254 are written; not NULL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetMetadataFieldName Object not defined."
 *   1   "ZOL_Object_GetMetadataFieldName Received a null pointer."
 *   1   "ZOL_Object_GetMetadataFieldName Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetMetadataFieldName(ObjectHandle* handle, const int* index,
                                                 char* buffer);

/**
 * The text of the metadata field at a position.
 * handle    in. Borrowed for this call.
 * index     in, from 0
 * buffer    out, 255 bytes, of which 254 are written; not NULL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetMetadataFieldValue_Index Object not defined."
 *   1   "ZOL_Object_GetMetadataFieldValue_Index Received a null pointer."
 *   1   "ZOL_Object_GetMetadataFieldValue_Index Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetMetadataFieldValue_Index(ObjectHandle* handle, const int* index,
                                                        char* buffer);

/**
 * The text of the metadata field of a name.
 * handle    in. Borrowed for this call.
 * name      in, not NULL. Borrowed for this call.
 * buffer    out, 255 bytes, of which 254 are written; not NULL
 * Results:
 *   0   success
 *   1   "ZOL_Object_GetMetadataFieldValue_Name Object not defined."
 *   1   "ZOL_Object_GetMetadataFieldValue_Name Received a null pointer."
 *   1   "ZOL_Object_GetMetadataFieldValue_Name Field does not exist."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_GetMetadataFieldValue_Name(ObjectHandle* handle, const char* name,
                                                       char* buffer);

/* ---- Polylines --------------------------------------------------------------------
 * Lines, polylines, points, the rings of areas, and curves, which are flattened on reading.
 */

/**
 * The number of points of a polyline.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   1     "ZOL_Object_Polyline_NPoints Object not defined."
 *   1     "ZOL_Object_Polyline_NPoints Object not a polyline."
 *   -1    "ZOL_API not initialised."
 * Departure: it fails with 1, which may also be the count. ZOL_API_HasError tells the two
 * apart.
 */
ZOL_EXPORTED int ZOL_Object_Polyline_NPoints(ObjectHandle* handle);

/**
 * How the line of a polyline is broken.
 * handle    in. Borrowed for this call.
 * line_type out: 0 an unbroken line, else the position among the other line types of the
 *           database, from 1
 * Results:
 *   0   success
 *   1   "ZOL_Object_Polyline_GetLineType Object not defined."
 *   1   "ZOL_Object_Polyline_GetLineType Object not a polyline."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Polyline_GetLineType(ObjectHandle* handle, int* line_type);

/**
 * How a polyline is drawn.
 * handle    in. Borrowed for this call.
 * line_type out: 0 an unbroken line, else the position among the other line types of the
 *           database, from 1
 * line_weight out, hundredths of a millimetre; -3 where the source leaves it open
 * is_closed out, 1 where a segment leads from the last point to the first, else 0
 * has_curves out, 1 where parts of it were flattened from a curve, else 0
 * Results:
 *   0   success
 *   1   "ZOL_Object_Polyline_GetAttributes Object not defined."
 *   1   "ZOL_Object_Polyline_GetAttributes Object not a polyline."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Polyline_GetAttributes(ObjectHandle* handle, int* line_type,
                                                   int* line_weight, int* is_closed,
                                                   int* has_curves);

/**
 * A point of a polyline.
 * handle    in. Borrowed for this call.
 * index     in, from 0
 * x, y, z   out, in the unit of the source
 * w         out, the bulge that the source gives to the segment that begins here: the tangent
 *           of a quarter of its angle, above 0 counter-clockwise, 0 for a straight one
 * t         out, 1 where a segment leads to this point from the one before it, 0 where none
 *           does
 * name      out, 255 bytes, all written: the name of the point, mostly empty, cut at 254
 *           bytes, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Object_Polyline_GetPointInfo Object not defined."
 *   1   "ZOL_Object_Polyline_GetPointInfo Object not a polyline."
 *   1   "ZOL_Object_Polyline_GetPointInfo Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Polyline_GetPointInfo(ObjectHandle* handle, const int* index, double* x,
                                                  double* y, double* z, double* w, int* t,
                                                  char* name);

/**
 * Where a point of a polyline comes from.
 * handle    in. Borrowed for this call.
 * index     in, from 0
 * type      out: 2 it was made by flattening a curve; 1 the source marks it: a control point,
 *           or one that a curve was fitted to; 0 any other
 * Results:
 *   0   success
 *   1   "ZOL_Object_Polyline_GetPointType Object not defined."
 *   1   "ZOL_Object_Polyline_GetPointType Object not a polyline."
 *   1   "ZOL_Object_Polyline_GetPointType Invalid index."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Polyline_GetPointType(ObjectHandle* handle, const int* index,
                                                  int* type);

/* ---- Texts ------------------------------------------------------------------------
 * A text lies in the plan, a 3D text anywhere in space: neither answers the functions of the
 * other. The words of both are records, one a line of the text, without formatting codes.
 */

/**
 * The number of records of a text.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_Object_3DText_GetOrigin Object not defined."
 *   -1    "ZOL_Object_3DText_GetOrigin Object not text."
 *   -1    "ZOL_API not initialised."
 * Departure: its error texts name ZOL_Object_3DText_GetOrigin.
 */
ZOL_EXPORTED int ZOL_Object_Text_NRecords(ObjectHandle* handle);

/**
 * A record of a text. What is behind its first 254 bytes can't be had.
 * handle    in. Borrowed for this call.
 * index     in, from 0 to the number of records; that itself gives the empty text
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   -1  "ZOL_Object_Text_GetRecord Object not defined."
 *   -1  "ZOL_Object_Text_GetRecord Object not text."
 *   -1  "ZOL_Object_Text_GetRecord Invalid index."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_Text_GetRecord(ObjectHandle* handle, const int* index, char* buffer);

/**
 * The point at which a text is held.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_Text_GetOrigin Object not defined."
 *   1   "ZOL_Object_Text_GetOrigin Object not text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Text_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * How a text stands.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the text style
 * alignment out, 255 bytes, all written: which point of the text its origin is: "baseline",
 *           "bottom", "middle" or "top", a blank, and "left", "centre" or "right"
 * height    out, height of a letter in the unit of the source
 * rotation  out, degrees, counter-clockwise from the x axis
 * width_factor out, width of a letter in relation to the usual one
 * is_mirrored out, 1 where the text runs backwards, else 0; one that is upside down runs
 *           backwards and is turned by 180 degrees
 * Results:
 *   0   success
 *   1   "ZOL_Object_Text_GetAttributes Object not defined."
 *   1   "ZOL_Object_Text_GetAttributes Object not text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_Text_GetAttributes(ObjectHandle* handle, char* style, char* alignment,
                                               double* height, double* rotation,
                                               double* width_factor, int* is_mirrored);

/**
 * The number of records of a 3D text.
 * handle    in. Borrowed for this call.
 * Results:
 *   0...  the count
 *   -1    "ZOL_Object_3DText_GetOrigin Object not defined."
 *   -1    "ZOL_Object_3DText_GetOrigin Object not 3D text."
 *   -1    "ZOL_API not initialised."
 * Departure: its error texts name ZOL_Object_3DText_GetOrigin.
 */
ZOL_EXPORTED int ZOL_Object_3DText_NRecords(ObjectHandle* handle);

/**
 * A record of a 3D text. What is behind its first 254 bytes can't be had.
 * handle    in. Borrowed for this call.
 * index     in, from 0 to the number of records; that itself gives the empty text
 * buffer    out, 255 bytes, all written: the text cut at 254 bytes, then NUL
 * Results:
 *   0   success
 *   -1  "ZOL_Object_3DText_GetRecord Object not defined."
 *   -1  "ZOL_Object_3DText_GetRecord Object not 3D text."
 *   -1  "ZOL_Object_3DText_GetRecord Invalid index."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetRecord(ObjectHandle* handle, const int* index, char* buffer);

/**
 * The point at which a 3D text is held.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_3DText_GetOrigin Object not defined."
 *   1   "ZOL_Object_3DText_GetOrigin Object not 3D text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * Which point of a 3D text its origin is.
 * handle    in. Borrowed for this call.
 * across    out: 0 left, 1 centre, 2 right, -1 unknown
 * up        out: 0 baseline, 1 bottom, 2 middle, 3 top, -1 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_3DText_GetOriginPosition Object not defined."
 *   1   "ZOL_Object_3DText_GetOriginPosition Object not 3D text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetOriginPosition(ObjectHandle* handle, int* across, int* up);

/**
 * The direction in which a 3D text runs.
 * handle    in. Borrowed for this call.
 * x, y, z   out, a vector of length 1
 * Results:
 *   0   success
 *   1   "ZOL_Object_3DText_GetDirection Object not defined."
 *   1   "ZOL_Object_3DText_GetDirection Object not 3D text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetDirection(ObjectHandle* handle, double* x, double* y,
                                                double* z);

/**
 * The normal of the plane that a 3D text lies in, towards its reader.
 * handle    in. Borrowed for this call.
 * x, y, z   out, a vector of length 1
 * Results:
 *   0   success
 *   1   "ZOL_Object_3DText_GetNormal Object not defined."
 *   1   "ZOL_Object_3DText_GetNormal Object not 3D text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetNormal(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * How a 3D text looks.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the text style
 * font      out, 255 bytes, all written: the name of the font, or of its file
 * height    out, height of a letter in the unit of the source
 * width_factor out, width of a letter in relation to the usual one
 * is_mirrored out, 1 where the text runs backwards, else 0
 * Results:
 *   0   success
 *   1   "ZOL_Object_3DText_GetAttributes Object not defined."
 *   1   "ZOL_Object_3DText_GetAttributes Object not 3D text."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_3DText_GetAttributes(ObjectHandle* handle, char* style, char* font,
                                                 double* height, double* width_factor,
                                                 int* is_mirrored);

/* ---- Arrows -----------------------------------------------------------------------
 * An arrow leads from its head, at the start, to a note, at the end.
 */

/**
 * The point of an arrow where its head is.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   -1  "ZOL_Object_Arrow_GetStart Object not defined."
 *   -1  "ZOL_Object_Arrow_GetStart Object not arrow."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetStart(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * The point of an arrow where its note is.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   -1  "ZOL_Object_Arrow_GetEnd Object not defined."
 *   -1  "ZOL_Object_Arrow_GetEnd Object not arrow."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetEnd(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * The normal of the plane that an arrow lies in.
 * handle    in. Borrowed for this call.
 * x, y, z   out, a vector of length 1
 * Results:
 *   0   success
 *   -1  "ZOL_Object_Arrow_GetNormal Object not defined."
 *   -1  "ZOL_Object_Arrow_GetNormal Object not arrow."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetNormal(ObjectHandle* handle, double* x, double* y, double* z);

/**
 * The size of the head of an arrow as its style states it, before the scale of the drawing.
 * handle    in. Borrowed for this call.
 * length    out, in the unit of the source
 * width     out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_Arrow_GetHeadInfo Object not defined."
 *   1   "ZOL_Object_Arrow_GetHeadInfo Object not 3D text."
 *   -1  "ZOL_API not initialised."
 * Departure: the error text of an object of another kind speaks of 3D text.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetHeadInfo(ObjectHandle* handle, double* length, double* width);

/**
 * The size of the head of an arrow as it is drawn: the one of its style times the scale of
 * the drawing.
 * handle    in. Borrowed for this call.
 * length    out, in the unit of the source
 * width     out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_Arrow_GetScaledHeadInfo Object not defined."
 *   1   "ZOL_Object_Arrow_GetScaledHeadInfo Object not 3D text."
 *   -1  "ZOL_API not initialised."
 * Departure: the error text of an object of another kind speaks of 3D text.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetScaledHeadInfo(ObjectHandle* handle, double* length,
                                                    double* width);

/**
 * The size of the head of an arrow as it is drawn, as a part of the distance from start to
 * end; 0 where that is 0.
 * handle    in. Borrowed for this call.
 * length    out, a ratio
 * width     out, a ratio
 * Results:
 *   0   success
 *   1   "ZOL_Object_Arrow_GetRelativeHeadInfo Object not defined."
 *   1   "ZOL_Object_Arrow_GetRelativeHeadInfo Object not 3D text."
 *   -1  "ZOL_API not initialised."
 * Departure: the error text of an object of another kind speaks of 3D text.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetRelativeHeadInfo(ObjectHandle* handle, double* length,
                                                      double* width);

/**
 * How an arrow is drawn.
 * handle    in. Borrowed for this call.
 * has_head  out, 1 where the head is drawn, else 0
 * is_curved out, 1 where the line is a curve, else 0
 * at_end    out, what stands at the end: 0 a text, 1 a tolerance, 2 a block, 3 nothing
 * hook      out, the short line that leads to a text: 0 none, 1 along the text, 2 against it
 * Results:
 *   0   success
 *   1   "ZOL_Object_Arrow_GetAttributes Object not defined."
 *   1   "ZOL_Object_Arrow_GetAttributes Object not 3D text."
 *   -1  "ZOL_API not initialised."
 * Departure: the error text of an object of another kind speaks of 3D text.
 */
ZOL_EXPORTED int ZOL_Object_Arrow_GetAttributes(ObjectHandle* handle, int* has_head, int* is_curved,
                                                int* at_end, int* hook);

/* ---- Dimensions -------------------------------------------------------------------
 * A dimension writes a measure into a drawing. A line dimension measures a distance, along
 * the line from its start to its end; a radius dimension measures a radius, from the centre
 * to the circle, or a diameter, from one side of the circle to the other; an arc dimension
 * measures the length of an arc, and an angle dimension an angle, in degrees. The last two
 * have an arc round their origin, which runs from the point called radius to the point called
 * sweep, counter-clockwise as seen from above. All these points are those of the line or arc
 * that is drawn with the text, not of what is measured. Lengths are in the unit of the
 * source.
 */

/**
 * The measure of a line dimension, and how it is drawn.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the dimension style
 * measure   out, the distance
 * head      out, length of an arrow head
 * overshoot out, how far the lines at the ends reach beyond the dimension line
 * offset    out, how far they stay away from what is measured
 * gap       out, distance between text and line
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionLine_GetAttributes Object not defined."
 *   1   "ZOL_Object_DimensionLine_GetAttributes Object not a dimension line."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionLine_GetAttributes(ObjectHandle* handle, char* style,
                                                        double* measure, double* head,
                                                        double* overshoot, double* offset,
                                                        double* gap);

/**
 * The text of a line dimension.
 * handle    in. Borrowed for this call.
 * text      out, 255 bytes, all written: the text as it is drawn, the measure in it written
 *           out; cut at 254 bytes
 * style     out, 255 bytes, of which 254 are written: the name of the text style. Byte 254
 *           stays, so that a name of 254 bytes or more has no terminator
 * height    out, height of a letter
 * location  out, where the text stands: 0 in the line, 1 above it, 2 outside, away from what
 *           is measured, 3 as the Japanese standard has it, 4 below, 5 where somebody has put
 *           it; -1 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionLine_GetTextAttributes Object not defined."
 *   1   "ZOL_Object_DimensionLine_GetTextAttributes Object not a dimension line."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionLine_GetTextAttributes(ObjectHandle* handle, char* text,
                                                            char* style, double* height,
                                                            int* location);

/**
 * Where the line of a line dimension begins.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionLine_GetStart Object not defined."
 *   1   "ZOL_Object_DimensionLine_GetStart Object not a dimension line."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionLine_GetStart(ObjectHandle* handle, double* x, double* y,
                                                   double* z);

/**
 * Where the line of a line dimension ends.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionLine_GetEnd Object not defined."
 *   1   "ZOL_Object_DimensionLine_GetEnd Object not a dimension line."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionLine_GetEnd(ObjectHandle* handle, double* x, double* y,
                                                 double* z);

/**
 * The normal of the plane that a line dimension lies in.
 * handle    in. Borrowed for this call.
 * x, y, z   out, a vector of length 1
 * Results:
 *   0   success
 *   -1  "ZOL_Object_DimensionLine_GetNormal Object not defined."
 *   -1  "ZOL_Object_DimensionLine_GetNormal Object not a dimension line."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_DimensionLine_GetNormal(ObjectHandle* handle, double* x, double* y,
                                                    double* z);

/**
 * The measure of a radius dimension, and how it is drawn.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the dimension style
 * measure   out, the radius or diameter
 * head      out, length of an arrow head
 * overshoot out, how far the lines at the ends reach beyond the dimension line
 * offset    out, how far they stay away from what is measured
 * gap       out, distance between text and line
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionRadius_GetAttributes Object not defined."
 *   1   "ZOL_Object_DimensionRadius_GetAttributes Object not a dimension radius."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionRadius_GetAttributes(ObjectHandle* handle, char* style,
                                                          double* measure, double* head,
                                                          double* overshoot, double* offset,
                                                          double* gap);

/**
 * The text of a line dimension: a radius dimension fails here, and its text can't be had.
 * handle    in. Borrowed for this call.
 * text      out, 255 bytes, all written: the text as it is drawn, the measure in it written
 *           out; cut at 254 bytes
 * style     out, 255 bytes, of which 254 are written: the name of the text style. Byte 254
 *           stays, so that a name of 254 bytes or more has no terminator
 * height    out, height of a letter
 * location  out, where the text stands: 0 in the line, 1 above it, 2 outside, away from what
 *           is measured, 3 as the Japanese standard has it, 4 below, 5 where somebody has put
 *           it; -1 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionRadius_GetTextAttributes Object not defined."
 *   1   "ZOL_Object_DimensionRadius_GetTextAttributes Object not a dimension radius."
 *   -1  "ZOL_API not initialised."
 * Departure: the object is tested for a line dimension. Such a one passes, and its own text
 * is handed out.
 */
ZOL_EXPORTED int ZOL_Object_DimensionRadius_GetTextAttributes(ObjectHandle* handle, char* text,
                                                              char* style, double* height,
                                                              int* location);

/**
 * Where the line of a radius dimension begins: at the centre, for a diameter on the circle.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionRadius_GetStart Object not defined."
 *   1   "ZOL_Object_DimensionRadius_GetStart Object not a dimension radius."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionRadius_GetStart(ObjectHandle* handle, double* x, double* y,
                                                     double* z);

/**
 * Where the line of a radius dimension ends: on the circle.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionLine_GetEnd Object not defined."
 *   1   "ZOL_Object_DimensionLine_GetEnd Object not a dimension radius."
 *   -1  "ZOL_API not initialised."
 * Departure: its error texts name ZOL_Object_DimensionLine_GetEnd.
 */
ZOL_EXPORTED int ZOL_Object_DimensionRadius_GetEnd(ObjectHandle* handle, double* x, double* y,
                                                   double* z);

/**
 * The normal of the plane that a radius dimension lies in.
 * handle    in. Borrowed for this call.
 * x, y, z   out, a vector of length 1
 * Results:
 *   0   success
 *   -1  "ZOL_Object_DimensionRadius_GetNormal Object not defined."
 *   -1  "ZOL_Object_DimensionRadius_GetNormal Object not a dimension radius."
 *   -1  "ZOL_API not initialised."
 * Departure: it fails with -1, though it is a status function.
 */
ZOL_EXPORTED int ZOL_Object_DimensionRadius_GetNormal(ObjectHandle* handle, double* x, double* y,
                                                      double* z);

/**
 * The measure of an arc dimension, and how it is drawn.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the dimension style
 * measure   out, the length of the arc
 * head      out, length of an arrow head
 * overshoot out, how far the lines at the ends reach beyond the dimension line
 * offset    out, how far they stay away from what is measured
 * gap       out, distance between text and line
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionArc_GetAttributes Object not defined."
 *   1   "ZOL_Object_DimensionArc_GetAttributes Object not a dimension arc."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionArc_GetAttributes(ObjectHandle* handle, char* style,
                                                       double* measure, double* head,
                                                       double* overshoot, double* offset,
                                                       double* gap);

/**
 * The text of an arc dimension.
 * handle    in. Borrowed for this call.
 * text      out, 255 bytes, all written: the text as it is drawn, the measure in it written
 *           out; cut at 254 bytes
 * style     out, 255 bytes, of which 254 are written: the name of the text style. Byte 254
 *           stays, so that a name of 254 bytes or more has no terminator
 * height    out, height of a letter
 * location  out, where the text stands: 0 in the line, 1 above it, 2 outside, away from what
 *           is measured, 3 as the Japanese standard has it, 4 below, 5 where somebody has put
 *           it; -1 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionArc_GetTextAttributes Object not defined."
 *   1   "ZOL_Object_DimensionArc_GetTextAttributes Object not a dimension arc."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionArc_GetTextAttributes(ObjectHandle* handle, char* text,
                                                           char* style, double* height,
                                                           int* location);

/**
 * The centre of an arc dimension.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionArc_GetOrigin Object not defined."
 *   1   "ZOL_Object_DimensionArc_GetOrigin Object not a dimension arc."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionArc_GetOrigin(ObjectHandle* handle, double* x, double* y,
                                                   double* z);

/**
 * Where the arc of an arc dimension begins.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionArc_GetRadius Object not defined."
 *   1   "ZOL_Object_DimensionArc_GetRadius Object not a dimension arc."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionArc_GetRadius(ObjectHandle* handle, double* x, double* y,
                                                   double* z);

/**
 * Where the arc of an arc dimension ends.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionArc_GetSweep Object not defined."
 *   1   "ZOL_Object_DimensionArc_GetSweep Object not a dimension arc."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionArc_GetSweep(ObjectHandle* handle, double* x, double* y,
                                                  double* z);

/**
 * The measure of an angle dimension, and how it is drawn.
 * handle    in. Borrowed for this call.
 * style     out, 255 bytes, all written: the name of the dimension style
 * measure   out, the angle in degrees
 * head      out, length of an arrow head
 * overshoot out, how far the lines at the ends reach beyond the dimension line
 * offset    out, how far they stay away from what is measured
 * gap       out, distance between text and line
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionAngle_GetAttributes Object not defined."
 *   1   "ZOL_Object_DimensionAngle_GetAttributes Object not a dimension angle."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionAngle_GetAttributes(ObjectHandle* handle, char* style,
                                                         double* measure, double* head,
                                                         double* overshoot, double* offset,
                                                         double* gap);

/**
 * The text of an angle dimension.
 * handle    in. Borrowed for this call.
 * text      out, 255 bytes, all written: the text as it is drawn, the measure in it written
 *           out; cut at 254 bytes
 * style     out, 255 bytes, of which 254 are written: the name of the text style. Byte 254
 *           stays, so that a name of 254 bytes or more has no terminator
 * height    out, height of a letter
 * location  out, where the text stands: 0 in the line, 1 above it, 2 outside, away from what
 *           is measured, 3 as the Japanese standard has it, 4 below, 5 where somebody has put
 *           it; -1 unknown
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionAngle_GetTextAttributes Object not defined."
 *   1   "ZOL_Object_DimensionAngle_GetTextAttributes Object not a dimension angle."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionAngle_GetTextAttributes(ObjectHandle* handle, char* text,
                                                             char* style, double* height,
                                                             int* location);

/**
 * The apex of the angle of an angle dimension.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionAngle_GetOrigin Object not defined."
 *   1   "ZOL_Object_DimensionAngle_GetOrigin Object not a dimension angle."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionAngle_GetOrigin(ObjectHandle* handle, double* x, double* y,
                                                     double* z);

/**
 * Where the arc of an angle dimension begins.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionAngle_GetRadius Object not defined."
 *   1   "ZOL_Object_DimensionAngle_GetRadius Object not a dimension angle."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionAngle_GetRadius(ObjectHandle* handle, double* x, double* y,
                                                     double* z);

/**
 * Where the arc of an angle dimension ends.
 * handle    in. Borrowed for this call.
 * x, y, z   out, in the unit of the source
 * Results:
 *   0   success
 *   1   "ZOL_Object_DimensionAngle_GetSweep Object not defined."
 *   1   "ZOL_Object_DimensionAngle_GetSweep Object not a dimension angle."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Object_DimensionAngle_GetSweep(ObjectHandle* handle, double* x, double* y,
                                                    double* z);

/* ---- Triangulations ---------------------------------------------------------------
 * A triangulation is a mesh of points and triangles. Both are counted from 0 in the order of
 * the file; the corners of a triangle are points of the same triangulation. Coordinates are
 * in the unit of the file. docs/triangulations.md tells how the questions about shape are
 * answered.
 */

/**
 * Opens a triangulation for reading, from one of the formats of docs/formats. Why a file does
 * not open is told on the diagnostics channel, which the environment variable ZOL_DIAGNOSTICS
 * turns on (docs/diagnostics.md). A file without points does not open.
 * file_name in, the name of the file; "file#element" picks an element of a file that holds
 *           several; without it the first is taken. Borrowed for this call.
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Triangulation_Close
 *   NULL      "ZOL_Triangulation_Open error opening/loading <file_name>", the name exactly as
 *             passed
 *   NULL      "ZOL_API not initialised."
 */
ZOL_EXPORTED TriangulationHandle* ZOL_Triangulation_Open(const char* file_name);

/**
 * Closes a triangulation and ends its handle.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   closed; the handle is gone
 *   1   "ZOL_Triangulation_Close Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_Close(TriangulationHandle* handle);

/**
 * Tells whether a handle stands for a triangulation that has points.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it does
 *   -1  "ZOL_Triangulation_IsValid Triangulation contains zero points."
 *   -1  "ZOL_Triangulation_IsValid Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 * Departure: it never answers 0.
 */
ZOL_EXPORTED int ZOL_Triangulation_IsValid(TriangulationHandle* handle);

/**
 * The colour that the whole triangulation is shown in.
 * handle    in. Borrowed for this call.
 * red, green, blue  out, each 0 to 255
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetColour Triangulation not defined."; the outputs stay
 *   -1  "ZOL_API not initialised."; the outputs stay
 */
ZOL_EXPORTED int ZOL_Triangulation_GetColour(TriangulationHandle* handle, int* red, int* green,
                                             int* blue);

/**
 * Tells whether the triangulation is to be shown translucent.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is opaque
 *   -1  "ZOL_Triangulation_IsTranslucent Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsTranslucent(TriangulationHandle* handle);

/**
 * How translucent the triangulation is: from 0, opaque, to 1, clear.
 * handle    in. Borrowed for this call.
 * Results:
 *   the translucency
 *   -1.0  "ZOL_Triangulation_GetTranslucency Triangulation not defined."
 *   -1.0  "ZOL_API not initialised."
 */
ZOL_EXPORTED double ZOL_Triangulation_GetTranslucency(TriangulationHandle* handle);

/**
 * Tells whether the triangulation has a texture.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it has
 *   0   it has none
 *   -1  "ZOL_Triangulation_IsTextured Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsTextured(TriangulationHandle* handle);

/**
 * The name of the texture, empty where there is none.
 * handle    in. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the name cut at 254 characters, then NUL
 * Results:
 *   0   success, without a texture too
 *   1   "ZOL_Triangulation_GetTexture Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_GetTexture(TriangulationHandle* handle, char* buffer);

/**
 * The number of points.
 * handle    in. Borrowed for this call.
 * Results:
 *   the number
 *   -1  "ZOL_Triangulation_NumPoints Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_NumPoints(TriangulationHandle* handle);

/**
 * A point.
 * handle    in. Borrowed for this call.
 * index     in, from 0 to below ZOL_Triangulation_NumPoints
 * x, y, z   out
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetPoint Triangulation not defined."
 *   1   "ZOL_Triangulation_GetPoint Invalid point index."
 *   -1  "ZOL_API not initialised."
 * The outputs stay on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetPoint(TriangulationHandle* handle, const int* index,
                                            double* x, double* y, double* z);

/**
 * The number of triangles, which may be 0.
 * handle    in. Borrowed for this call.
 * Results:
 *   the number
 *   -1  "ZOL_Triangulation_NumTriangles Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_NumTriangles(TriangulationHandle* handle);

/**
 * The corners of a triangle.
 * handle    in. Borrowed for this call.
 * index     in, from 0 to below ZOL_Triangulation_NumTriangles
 * first, second, third  out, indices of points
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetTriangle Triangulation not defined."
 *   1   "ZOL_Triangulation_GetTriangle triangle index invalid", without a full stop
 *   -1  "ZOL_API not initialised."
 * The outputs stay on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetTriangle(TriangulationHandle* handle, const int* index,
                                               int* first, int* second, int* third);

/**
 * The volume that the triangulation encloses, in cubed units of its coordinates, never below
 * 0: by signed tetrahedra against one point (Gauss's theorem). 0 for one that is not closed,
 * or that can't be oriented.
 * handle    in. Borrowed for this call.
 * volume    out
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetVolume Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_GetVolume(TriangulationHandle* handle, double* volume);

/**
 * Tells whether the triangulation is a solid: consistent, without a border edge, and of a
 * volume that is not 0.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is not
 *   -1  "ZOL_Triangulation_IsSolid Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsSolid(TriangulationHandle* handle);

/**
 * Tells whether the triangulation is a surface: not a solid, and met by no vertical line in
 * more than one point.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is not
 *   -1  "ZOL_Triangulation_IsSurface Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsSurface(TriangulationHandle* handle);

/**
 * Tells whether the triangulation crosses itself: two of its triangles meet in more than a
 * shared corner or edge. Decided exactly.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it does
 *   0   it does not
 *   -1  "ZOL_Triangulation_IsCrossing Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsCrossing(TriangulationHandle* handle);

/**
 * Tells whether the triangulation is consistent: no edge has more than two triangles, and two
 * at an edge run along it in opposite directions.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it is
 *   0   it is not
 *   -1  "ZOL_Triangulation_IsConsistent Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsConsistent(TriangulationHandle* handle);

/**
 * Tells whether a point is inside the triangulation: whether the surface winds round it. In
 * one that is closed, but whose triangles are not oriented alike, whether an odd number of
 * sheets is over it. A triangulation that is not closed has no inside. Decided exactly, also
 * near the surface.
 * handle    in. Borrowed for this call.
 * x, y, z   in
 * Results:
 *   1   it is
 *   0   it is not
 *   -1  "ZOL_Triangulation_IsPointInside Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsPointInside(TriangulationHandle* handle, const double* x,
                                                 const double* y, const double* z);

/**
 * Tells whether a point is on the triangulation: no farther from it than a tolerance.
 * handle    in. Borrowed for this call.
 * x, y, z   in
 * tolerance in, in the unit of the coordinates; 0 asks for a point exactly on a triangle
 * Results:
 *   1   it is
 *   0   it is not; also for a tolerance below 0 or NaN, and a point that is not finite
 *   -1  "ZOL_Triangulation_IsPointOn Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_IsPointOn(TriangulationHandle* handle, const double* x,
                                             const double* y, const double* z,
                                             const double* tolerance);

/**
 * The names of all attributes, in the order of the file. A name may occur twice; the functions
 * below then find the first.
 * handle    in. Borrowed for this call.
 * names     in, an array of pointers to buffers of 255 bytes, one for each attribute; no call
 *           tells beforehand how many there are, but this library gives at most 1000. All
 *           bytes of the buffers that are used are written: the name cut at 254 characters,
 *           then NUL. Further ones are not touched
 * count     out, the number of attributes
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeNames Triangulation not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeNames(TriangulationHandle* handle, char** names,
                                                     int* count);

/**
 * What type an attribute has.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * type      out: 1 INT32, 2 INT64, 3 BOOLEAN, 4 DOUBLE, 5 STRING, and dates as text: 6
 *           year/month/day, 7 day/month/year, 8 month/day/year; 0 any other
 * Results:
 *   0   success, for a type without a number too
 *   1   "ZOL_Triangulation_GetAttributeType Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeType Could not find attribute."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeType(TriangulationHandle* handle, const char* name,
                                                    int* type);

/**
 * The value of an attribute as a 32-bit number. An INT64 gives its low 32 bits; a DOUBLE is
 * cut towards zero, and gives -2147483648 where that does not fit; a text must be a sign,
 * digits, a point and digits, each of which may be missing, though not all, and is read as
 * atoi reads it: as far as it is a whole number; what does not fit 32 bits is of no use.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * value     out
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsInt32 Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsInt32 Could not find attribute."
 *   1   "ZOL_Triangulation_GetAttributeAsInt32 Attribute value is not a number."
 *   -1  "ZOL_API not initialised."
 * The output stays on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsInt32(TriangulationHandle* handle,
                                                       const char* name, int* value);

/**
 * The value of an attribute as a 64-bit number: as ZOL_Triangulation_GetAttributeAsInt32 but
 * for the wider result, in which a DOUBLE that does not fit gives the least number. A text
 * still reaches no further than 32 bits.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * value     out
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsInt64 Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsInt64 Could not find attribute."
 *   1   "ZOL_Triangulation_GetAttributeAsInt64 Attribute value is not a number."
 *   -1  "ZOL_API not initialised."
 * The output stays on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsInt64(TriangulationHandle* handle,
                                                       const char* name, long long* value);

/**
 * The value of an attribute as true or false: for a number whether it is not 0; NaN is true. A
 * text is no truth value, whether it says TRUE, FALSE, 0 or 1. The one exception is the line
 * "(0|TRUE|FALSE)" or "(1|TRUE|FALSE)", in any letter case and with any number of letters s
 * behind it: it gives 0. Of a text of several lines any one may be that line.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * value     out, 1 or 0
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsBoolean Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsBoolean Could not find attribute."
 *   1   "ZOL_Triangulation_GetAttributeAsBoolean Attribute value is not a boolean."
 *   -1  "ZOL_API not initialised."
 * The output stays on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsBoolean(TriangulationHandle* handle,
                                                         const char* name, int* value);

/**
 * The value of an attribute as a double. A text must be a line of a sign, digits, a point,
 * digits, the letter e or E, a sign, each of which may be missing, and at least one digit: 1.0,
 * 1e5 and +.5 are, "1." is not. It is read as atof reads it, in every locale with a decimal
 * point: as far as it is a number, so that "1+5" gives 1. Of a text of several lines any one
 * may have that form, but the reading starts at the front: where no number is there, it gives 0.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * value     out
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsDouble Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsDouble Could not find attribute."
 *   1   "ZOL_Triangulation_GetAttributeAsDouble Attribute value is not a number."
 *   -1  "ZOL_API not initialised."
 * The output stays on each failure.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsDouble(TriangulationHandle* handle,
                                                        const char* name, double* value);

/**
 * The value of an attribute as text, whatever its type. A number has at most six decimals.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * buffer    out, 255 bytes, all written: the text cut at 254 characters, then NUL
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsString Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsString Could not find attribute."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsString(TriangulationHandle* handle,
                                                        const char* name, char* buffer);

/**
 * The value of a date attribute. Its type says in which order its text has the fields; the
 * text is four digits for the year and two each for month and day, with slashes between. No
 * calendar is asked: 9999/99/99 is read as it stands.
 * handle    in. Borrowed for this call.
 * name      in, letter case counts. Borrowed for this call.
 * year, month, day  out, in this order whatever the order of the text
 * Results:
 *   0   success
 *   1   "ZOL_Triangulation_GetAttributeAsDate Triangulation not defined."
 *   1   "ZOL_Triangulation_GetAttributeAsDate Could not find attribute."
 *   1   "ZOL_Triangulation_GetAttributeAsDate Attribute value is not a date."
 *   -1  "ZOL_API not initialised."
 * The outputs stay on each failure. In a text of several lines any line may be the date, but
 * the fields are read from the start of the text: those that are not there stay.
 */
ZOL_EXPORTED int ZOL_Triangulation_GetAttributeAsDate(TriangulationHandle* handle, const char* name,
                                                      int* year, int* month, int* day);

/* ---- Grids ------------------------------------------------------------------------
 * A grid is a regular lattice of nodes, each with a value. The first index runs east, along
 * x, and the second north, along y; both count from 0, and node (0, 0) is the south-west one,
 * whatever order the file has. Node (i, j) lies at (first x + i * spacing along x, first y +
 * j * spacing along y), in the unit of the file. Where a file gives values to cells, the
 * nodes are the centres of the cells.
 */

/**
 * Opens a grid for reading: a raster in any of the formats of docs/formats/grids.md, or a
 * grid surface of OMF version 1. Why a file does not open is told on the diagnostics channel,
 * which the environment variable ZOL_DIAGNOSTICS turns on (docs/diagnostics.md).
 * file_name in, the name of the file; "file#band" picks a band of a raster, by its number from
 *           1 or by its name, and "file#element" a surface of a file that holds several;
 *           without "#" the first is taken. A file of the whole name goes before both. A name
 *           that begins with "/vsi" is one of GDAL's virtual files. Borrowed for this call.
 * Results:
 *   a handle  Owned by the caller; end with ZOL_Grid_Close
 *   NULL      "ZOL_Grid_Open error opening/loading <file_name>", the name exactly as passed
 *   NULL      "ZOL_API not initialised."
 */
ZOL_EXPORTED GridHandle* ZOL_Grid_Open(const char* file_name);

/**
 * Closes a grid and ends its handle.
 * handle    in. Taken over on success, borrowed on failure.
 * Results:
 *   0   closed; the handle is gone
 *   1   "ZOL_Grid_Close Grid not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Grid_Close(GridHandle* handle);

/**
 * Tells whether a handle stands for a grid that has been read.
 * handle    in. Borrowed for this call.
 * Results:
 *   1   it does
 *   0   the grid is not valid, though the handle is alive
 *   -1  "ZOL_Grid_IsValid Grid not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Grid_IsValid(GridHandle* handle);

/**
 * The two extreme nodes of a grid: the coordinates of the nodes themselves, not the outer
 * edges of cells around them.
 * handle    in. Borrowed for this call.
 * first_*   out, the south-west node
 * second_*  out, the north-east node
 * Results:
 *   0   success
 *   1   "ZOL_Grid_GetExtent Grid not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Grid_GetExtent(GridHandle* handle, double* first_x, double* first_y,
                                    double* second_x, double* second_y);

/**
 * The distance between neighbouring nodes along x and along y, both greater than 0.
 * handle    in. Borrowed for this call.
 * first     out, along x
 * second    out, along y
 * Results:
 *   0   success
 *   1   "ZOL_Grid_GetSpacing Grid not defined."
 *   -1  "ZOL_API not initialised."
 */
ZOL_EXPORTED int ZOL_Grid_GetSpacing(GridHandle* handle, double* first, double* second);

/**
 * The numbers of nodes along x and along y.
 * handle    in. Borrowed for this call.
 * width     out, along x, 1 or more
 * height    out, along y, 1 or more
 * Results:
 *   0   success
 *   1   "ZOL_Grid_GetNodes Grid not defined."
 *   -1  "ZOL_API not initialised."
 * Departure: its error text names ZOL_Grid_GetNodes, which does not exist, and it answers as
 * a status function though it counts.
 */
ZOL_EXPORTED int ZOL_Grid_NumNodes(GridHandle* handle, int* width, int* height);

/**
 * The value of a node, and whether it is masked: whether the file declares that it has no
 * data there. The value of a masked node is what the file holds in its place, often a code
 * or NaN, and is not to be computed with.
 * handle    in. Borrowed for this call.
 * first     in, node index along x, from 0
 * second    in, node index along y, from 0
 * value     out, the value; scale and offset of the file are applied
 * masked    out, 1 masked, 0 not
 * Results:
 *   0   success, for a masked node too
 *   1   no such node, or it can't be read: masked is 0, value stays, no error is pending,
 *       and the call counts as successful
 *   1   "ZOL_Grid_GetNodeValue Grid not defined."; both outputs stay
 *   -1  "ZOL_API not initialised."; both outputs stay
 * ZOL_API_HasError tells the two results 1 apart.
 */
ZOL_EXPORTED int ZOL_Grid_GetNodeValue(GridHandle* handle, const int* first, const int* second,
                                       double* value, int* masked);

#ifdef __cplusplus
}
#endif

#endif
