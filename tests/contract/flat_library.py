"""The flat library as Python sees it: its functions through ctypes, a model as an object.

Every scalar input goes by pointer and every text buffer is 255 bytes, so that is hidden
here, once; a call that fails raises with the library's own message.
"""

import ctypes
from ctypes import byref, c_char_p, c_double, c_int, c_longlong, c_void_p

BUFFER_BYTES = 255
TYPE_NAMES = ["unknown", "bit", "byte", "short", "sfloat", "integer", "int64", "float", "double",
              "string"]


class LibraryError(Exception):
    pass


class Library:
    def __init__(self, path):
        self._dll = ctypes.CDLL(path)
        for name, result in (("ZOL_BlockModel_Open", c_void_p),
                             ("ZOL_BlockModel_NBlocks", c_longlong),
                             ("ZOL_BlockModel_GetPosition", c_longlong)):
            self.function(name).restype = result
        self.function("ZOL_API_Init")()

    def function(self, name):
        return getattr(self._dll, name)

    def has_error(self):
        return self.function("ZOL_API_HasError")() == 1

    def error(self):
        buffer = ctypes.create_string_buffer(BUFFER_BYTES)
        self.function("ZOL_API_GetError")(buffer)
        return buffer.value.decode()

    def open(self, path):
        handle = self.function("ZOL_BlockModel_Open")(str(path).encode())
        if not handle:
            raise LibraryError(self.error())
        return Model(self, handle)


class Model:
    """An open block model; ends with close()."""

    def __init__(self, library, handle):
        self._library = library
        self._handle = c_void_p(handle)

    def _call(self, name, *arguments):
        result = self._library.function("ZOL_BlockModel_" + name)(self._handle, *arguments)
        if self._library.has_error():
            raise LibraryError(self._library.error())
        return result

    def _doubles(self, name, count, *inputs):
        values = [c_double() for _ in range(count)]
        if self._call(name, *inputs, *map(byref, values)) != 0:
            raise LibraryError(f"{name} found nothing")
        return [value.value for value in values]

    def _text(self, name, *inputs):
        buffer = ctypes.create_string_buffer(BUFFER_BYTES)
        self._call(name, *inputs, buffer)
        return buffer.value.decode()

    def close(self):
        self._call("Close")

    def count(self, name, *inputs):
        """A function that answers a count or a truth: "NBlocks", "IsStratigraphicModel"."""
        return self._call(name, *inputs)

    def extent(self):
        return self._doubles("GetModelExtent", 6)

    def origin(self):
        return self._doubles("GetModelOrigin", 3)

    def orientation(self):
        return self._doubles("GetModelOrientation", 3)

    def to_world(self, point):
        return self._doubles("ModelToWorld", 3, *(byref(c_double(each)) for each in point))

    def schema(self, name, index, count):
        return self._doubles("GetSchema" + name, count, byref(c_int(index)))

    def names(self, kind):
        """Names of one class of variables; kind is "", "Predefined", "Numeric" and so on."""
        return [self._text(f"Get{kind}VariableName", byref(c_int(index)))
                for index in range(self.count(f"N{kind}Variables"))]

    def translations(self, variable):
        name = variable.encode()
        return [self._text("GetTranslationName", name, byref(c_int(index)))
                for index in range(self.count("NTranslations", name))]

    def description(self, variable):
        return self._text("GetVariableDescription", variable.encode())

    def type_name(self, variable):
        code = c_int(-1)
        self._call("GetVariableType", variable.encode(), byref(code))
        return TYPE_NAMES[code.value]

    def default_number(self, variable):
        return self._doubles("GetDefaultNumber", 1, variable.encode())[0]

    def default_string(self, variable):
        return self._text("GetDefaultString", variable.encode())

    def walk(self):
        """Moves the cursor over all blocks and gives the position of each."""
        self._call("FirstBlock")
        while self._call("IsEof") == 0:
            yield self._call("GetPosition")
            self._call("NextBlock")

    def number(self, variable):
        return self._doubles("GetNumber", 1, variable.encode())[0]

    def string(self, variable):
        return self._text("GetString", variable.encode())

    def block_extent(self):
        return self._doubles("GetBlockExtent", 6)

    def position_at(self, point):
        """The position of the block at a point in model coordinates, or None."""
        found = self._call("FindXyz", *(byref(c_double(each)) for each in point))
        return self._call("GetPosition") if found == 0 else None

    def position_at_world(self, point):
        found = self._call("FindWorldXyz", *(byref(c_double(each)) for each in point))
        return self._call("GetPosition") if found == 0 else None
