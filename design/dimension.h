// What the four kinds of dimensions have alike.
#pragma once

#include "api/guard.h"
#include "api/marshalling.h"
#include "design/kinds.h"
#include "platform/zolDesignExport.h"

namespace zol::design::flat {

template <class View>
int store_dimension(api::FunctionId function, const Kind<View>& kind, ObjectHandle* handle,
                    char* style, double* measure, double* head, double* overshoot, double* offset,
                    double* gap) {
    return api::guarded(function, api::kStatus, kind, handle, [&](const View& dimension) {
        api::copy_text(dimension.GetDimensionString(), style);
        *measure = dimension.GetDimensionNumberA();
        *head = dimension.GetDimensionNumberB();
        *overshoot = dimension.GetDimensionNumberC();
        *offset = dimension.GetDimensionNumberD();
        *gap = dimension.GetDimensionNumberE();
    });
}

template <class View>
int store_dimension_text(api::FunctionId function, const Kind<View>& kind, ObjectHandle* handle,
                         char* text, char* style, double* height, int* location) {
    return api::guarded(function, api::kStatus, kind, handle, [&](const View& dimension) {
        api::copy_text(dimension.GetDimensionTextA(), text);
        api::copy_text_but_last(dimension.GetDimensionTextB(), style);
        // The terminator of the second text goes to the first buffer once more. Callers know
        // it so, and end the second one themselves.
        text[api::kTextBytes - 1] = '\0';
        *height = dimension.GetDimensionTextNumber();
        *location = static_cast<int>(dimension.GetTextLocation()) - 1;
    });
}

}  // namespace zol::design::flat
