/*
 * The flat functions of design databases, their layers and objects.
 *
 * They are not exported yet: no library stands behind them. This header joins
 * api/zolExportedApi_ReadOnly.h, whose opening comment holds here too, when one does.
 */
#ifndef ZOL_DESIGN_FLAT_FUNCTIONS_H
#define ZOL_DESIGN_FLAT_FUNCTIONS_H

#include "api/zolExportedApi_ReadOnly.h"

#ifdef __cplusplus
extern "C" {
#endif

/** An open design database. */
typedef struct DatabaseHandle DatabaseHandle;

/** A layer of a design database. */
typedef struct LayerHandle LayerHandle;

/** An object of a layer. */
typedef struct ObjectHandle ObjectHandle;

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
 * Tells whether a database has a layer of this name, hidden or not. The name is taken as it
 * stands, unlike in ZOL_Database_GetLayerByName.
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
 * A layer by its name, hidden or not. Blanks round the name and the case of its letters don't
 * count.
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

#ifdef __cplusplus
}
#endif

#endif
