// Every accessor against a table whose slots record how they are called.

#include "host/accessors.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// A value of each type that passes through the slots, unlike that for another number.
template <class Value>
Value valueFor(int number) {
    if constexpr (std::is_pointer_v<Value>) {
        return reinterpret_cast<Value>(static_cast<std::uintptr_t>(0x1000 + 16 * number));
    } else if constexpr (std::is_same_v<Value, FPoint>) {
        return {static_cast<float>(number), static_cast<float>(number) + 0.5f};
    } else if constexpr (std::is_same_v<Value, ARect>) {
        return {number, number + 1, number + 2, number + 3};
    } else {
        return static_cast<Value>(number);
    }
}

// Two values as bytes; a layer, which is never looked into, by where it is.
template <class Value>
bool isSame(const Value& a, const Value& b) {
    if constexpr (std::is_same_v<Value, ADocLayer>) {
        return &a == &b;
    } else {
        return std::memcmp(&a, &b, sizeof a) == 0;
    }
}

template <class Value>
bool isZero(const Value& value) {
    const Value zero = Value();
    return std::memcmp(&value, &zero, sizeof value) == 0;
}

// Stands in a slot. Keeps the addresses of what it was called with while the call lasts.
template <class Result, class... Arguments>
struct Slot {
    static inline int calls = 0;
    static inline bool sameArguments = false;
    static inline const std::tuple<Arguments...>* expected = nullptr;

    static Result record(Arguments... arguments) {
        ++calls;
        sameArguments = matches(std::index_sequence_for<Arguments...>(), arguments...);
        if constexpr (!std::is_void_v<Result>) return valueFor<Result>(77);
    }

private:
    template <std::size_t... Index>
    static bool matches(std::index_sequence<Index...>, const Arguments&... arguments) {
        return (isSame(std::get<Index>(*expected), arguments) && ...);
    }
};

// References to values that live as long as the program.
template <class Argument>
Argument argumentFor(int number) {
    using Value = std::remove_cv_t<std::remove_reference_t<Argument>>;
    if constexpr (std::is_same_v<Value, ADocLayer>) {
        static char layer[1];
        return reinterpret_cast<ADocLayer&>(layer);
    } else if constexpr (std::is_reference_v<Argument>) {
        static Value value;
        value = valueFor<Value>(number);
        return value;
    } else {
        return valueFor<Value>(number);
    }
}

template <class... Arguments, std::size_t... Index>
std::tuple<Arguments...> argumentsFor(std::index_sequence<Index...>) {
    return std::tuple<Arguments...>{argumentFor<Arguments>(static_cast<int>(Index) + 1)...};
}

template <class Helper, class Table, class Call, class Result, class... Arguments>
void checkSlot(const Call& call, Result (*Table::*slot)(Arguments...), const std::string& name) {
    using Stand = Slot<Result, Arguments...>;
    const auto arguments =
        argumentsFor<Arguments...>(std::make_index_sequence<sizeof...(Arguments)>());
    Table table = {};
    const auto returnsNothing = [&] {
        if constexpr (std::is_void_v<Result>) {
            std::apply(call, arguments);
            return true;
        } else {
            return isZero(std::apply(call, arguments));
        }
    };
    Stand::calls = 0;
    Stand::expected = &arguments;
    Helper::setFuncTable(nullptr);
    EXPECT_TRUE(returnsNothing()) << name << " without a table";
    Helper::setFuncTable(&table);
    EXPECT_TRUE(returnsNothing()) << name << " with a null slot";
    EXPECT_EQ(Stand::calls, 0);
    table.*slot = Stand::record;
    if constexpr (std::is_void_v<Result>) {
        std::apply(call, arguments);
    } else {
        EXPECT_TRUE(isSame(std::apply(call, arguments), valueFor<Result>(77))) << name;
    }
    EXPECT_EQ(Stand::calls, 1) << name;
    EXPECT_TRUE(Stand::sameArguments) << name;
    Helper::setFuncTable(nullptr);
}

#define CHECK_SLOT(kind, name) \
    checkSlot<kind##Helper>(kind##Helper::name, &kind##FuncTable::name, #kind "Helper::" #name)

}  // namespace

TEST(AGraphixHelper, PassesEveryCallOn) {
    CHECK_SLOT(AGraphix, convertToObj);
    CHECK_SLOT(AGraphix, convertFromObj);
    CHECK_SLOT(AGraphix, getPos);
    CHECK_SLOT(AGraphix, setPos);
    CHECK_SLOT(AGraphix, getSize);
    CHECK_SLOT(AGraphix, setSize);
    CHECK_SLOT(AGraphix, getClip);
    CHECK_SLOT(AGraphix, setClip);
    CHECK_SLOT(AGraphix, getParentWindow);
    CHECK_SLOT(AGraphix, setParentWindow);
    CHECK_SLOT(AGraphix, getChildWindow);
    CHECK_SLOT(AGraphix, setChildWindow);
    CHECK_SLOT(AGraphix, getNextWindow);
    CHECK_SLOT(AGraphix, setNextWindow);
    CHECK_SLOT(AGraphix, getPrevWindow);
    CHECK_SLOT(AGraphix, setPrevWindow);
}

TEST(AWinHelper, PassesEveryCallOn) {
    CHECK_SLOT(AWin, convertToGraphix);
    CHECK_SLOT(AWin, convertFromGraphix);
    CHECK_SLOT(AWin, convertToObj);
    CHECK_SLOT(AWin, convertFromObj);
    CHECK_SLOT(AWin, getCmdState);
    CHECK_SLOT(AWin, setCmdState);
    CHECK_SLOT(AWin, getText);
    CHECK_SLOT(AWin, setText);
    CHECK_SLOT(AWin, getMaximizeAmount);
    CHECK_SLOT(AWin, setMaximizeAmount);
}

TEST(ADocHelper, PassesEveryCallOn) {
    CHECK_SLOT(ADoc, convertToGraphix);
    CHECK_SLOT(ADoc, convertFromGraphix);
    CHECK_SLOT(ADoc, convertToObj);
    CHECK_SLOT(ADoc, convertFromObj);
    CHECK_SLOT(ADoc, getWorkCanvas);
    CHECK_SLOT(ADoc, setWorkCanvas);
    CHECK_SLOT(ADoc, getAllLayersCompositeCanvas);
    CHECK_SLOT(ADoc, setAllLayersCompositeCanvas);
    CHECK_SLOT(ADoc, getLayer);
    CHECK_SLOT(ADoc, setLayer);
    CHECK_SLOT(ADoc, getLayersCount);
    CHECK_SLOT(ADoc, setLayersCount);
    CHECK_SLOT(ADoc, getActiveLayerIndex);
    CHECK_SLOT(ADoc, setActiveLayerIndex);
    CHECK_SLOT(ADoc, getBackgroundColor);
    CHECK_SLOT(ADoc, setBackgroundColor);
    CHECK_SLOT(ADoc, getActiveView);
    CHECK_SLOT(ADoc, setActiveView);
    CHECK_SLOT(ADoc, getMaxZ);
    CHECK_SLOT(ADoc, setMaxZ);
    CHECK_SLOT(ADoc, getMaxShadedZ);
    CHECK_SLOT(ADoc, setMaxShadedZ);
    CHECK_SLOT(ADoc, notifyChanged);
    CHECK_SLOT(ADoc, copyToDoc);
}

TEST(AMemHelper, PassesEveryCallOn) {
    CHECK_SLOT(AMem, getPtr);
    CHECK_SLOT(AMem, setPtr);
}

TEST(ABMapHelper, PassesEveryCallOn) {
    CHECK_SLOT(ABMap, convertToGraphix);
    CHECK_SLOT(ABMap, convertFromGraphix);
    CHECK_SLOT(ABMap, convertToObj);
    CHECK_SLOT(ABMap, convertFromObj);
    CHECK_SLOT(ABMap, getMem);
    CHECK_SLOT(ABMap, setMem);
    CHECK_SLOT(ABMap, getDepth);
    CHECK_SLOT(ABMap, setDepth);
    CHECK_SLOT(ABMap, getPreCropedWidth);
    CHECK_SLOT(ABMap, setPreCropedWidth);
    CHECK_SLOT(ABMap, getPreCropedHeight);
    CHECK_SLOT(ABMap, setPreCropedHeight);
    CHECK_SLOT(ABMap, getCropZeroValue);
    CHECK_SLOT(ABMap, setCropZeroValue);
    CHECK_SLOT(ABMap, getDirtyRect);
    CHECK_SLOT(ABMap, setDirtyRect);
}

TEST(ACanvasHelper, PassesEveryCallOn) {
    CHECK_SLOT(ACanvas, convertToBMap);
    CHECK_SLOT(ACanvas, convertFromBMap);
    CHECK_SLOT(ACanvas, convertToGraphix);
    CHECK_SLOT(ACanvas, convertFromGraphix);
    CHECK_SLOT(ACanvas, convertToObj);
    CHECK_SLOT(ACanvas, convertFromObj);
    CHECK_SLOT(ACanvas, getBMap);
    CHECK_SLOT(ACanvas, setBMap);
    CHECK_SLOT(ACanvas, getBackgroundColor);
    CHECK_SLOT(ACanvas, setBackgroundColor);
}

TEST(AWinDocHelper, PassesEveryCallOn) {
    CHECK_SLOT(AWinDoc, convertToWin);
    CHECK_SLOT(AWinDoc, convertFromWin);
    CHECK_SLOT(AWinDoc, convertFromGraphix);
    CHECK_SLOT(AWinDoc, convertToGraphix);
    CHECK_SLOT(AWinDoc, convertFromObj);
    CHECK_SLOT(AWinDoc, convertToObj);
    CHECK_SLOT(AWinDoc, getDoc);
    CHECK_SLOT(AWinDoc, setDoc);
}

TEST(AWinPulldownHelper, PassesEveryCallOn) {
    CHECK_SLOT(AWinPulldown, convertToWin);
    CHECK_SLOT(AWinPulldown, convertFromWin);
    CHECK_SLOT(AWinPulldown, convertToGraphix);
    CHECK_SLOT(AWinPulldown, convertFromGraphix);
    CHECK_SLOT(AWinPulldown, convertToObj);
    CHECK_SLOT(AWinPulldown, convertFromObj);
    CHECK_SLOT(AWinPulldown, getWinsCount);
    CHECK_SLOT(AWinPulldown, getWin);
}

TEST(AMiscHelper, PassesEveryCallOn) {
    CHECK_SLOT(AMisc, startDebug);
    CHECK_SLOT(AMisc, endDebug);
}

// The host's order of this one table: a slot is reached by its number.
TEST(AWinDocHelper, ConvertsFromGraphixAndObjectsInFrontOfConvertingToThem) {
    static int called = -1;
    using Plain = void* (*)(void*);
    Plain slots[8] = {};
    slots[2] = [](void*) -> void* { return called = 2, nullptr; };
    slots[3] = [](void*) -> void* { return called = 3, nullptr; };
    slots[4] = [](void*) -> void* { return called = 4, nullptr; };
    slots[5] = [](void*) -> void* { return called = 5, nullptr; };
    AWinDocFuncTable table;
    static_assert(sizeof table == sizeof slots);
    std::memcpy(&table, slots, sizeof table);
    AWinDocHelper::setFuncTable(&table);
    AWinDocHelper::convertFromGraphix(nullptr);
    EXPECT_EQ(called, 2);
    AWinDocHelper::convertToGraphix(nullptr);
    EXPECT_EQ(called, 3);
    AWinDocHelper::convertFromObj(nullptr);
    EXPECT_EQ(called, 4);
    AWinDocHelper::convertToObj(nullptr);
    EXPECT_EQ(called, 5);
    AWinDocHelper::setFuncTable(nullptr);
}

TEST(DFunctionsHelper, InstallsAllTablesAndClearsThemForANullRoot) {
    AGraphixFuncTable graphix = {};
    AWinFuncTable win = {};
    ADocFuncTable doc = {};
    AMemFuncTable mem = {};
    ABMapFuncTable bMap = {};
    ACanvasFuncTable canvas = {};
    AWinDocFuncTable winDoc = {};
    AWinPulldownFuncTable winPulldown = {};
    AMiscFuncTable misc = {};
    void* tables[9] = {&graphix, &win, &doc, &mem, &bMap, &canvas, &winDoc, &winPulldown, &misc};
    const auto installed = [] {
        return std::vector<void*>{
            AGraphixHelper::s_table, AWinHelper::s_table,         ADocHelper::s_table,
            AMemHelper::s_table,     ABMapHelper::s_table,        ACanvasHelper::s_table,
            AWinDocHelper::s_table,  AWinPulldownHelper::s_table, AMiscHelper::s_table};
    };
    DorviaFuncTable root;
    std::memcpy(&root, tables, sizeof root);
    DFunctionsHelper::setFuncTable(&root);
    EXPECT_EQ(DFunctionsHelper::s_table, &root);
    EXPECT_EQ(installed(), std::vector<void*>(tables, tables + 9));
    DFunctionsHelper::setFuncTable(nullptr);
    EXPECT_EQ(DFunctionsHelper::s_table, nullptr);
    EXPECT_EQ(installed(), std::vector<void*>(9, nullptr));
}

TEST(Table2, KeepsTheGraphixTableOfTheFirstReplacementOnce) {
    AGraphixFuncTable first = {}, second = {}, third = {};
    DorviaFuncTable root = {};
    root.graphix = &first;
    AGraphixHelper::s_table = nullptr;
    s_table2 = nullptr;
    DFunctionsHelper::setFuncTable(&root);
    EXPECT_EQ(s_table2, nullptr) << "installing over nothing is no replacement";
    AGraphixHelper::setFuncTable(&second);
    EXPECT_EQ(s_table2, &first);
    AGraphixHelper::setFuncTable(&third);
    root.graphix = &second;
    DFunctionsHelper::setFuncTable(&root);
    DFunctionsHelper::setFuncTable(nullptr);
    EXPECT_EQ(s_table2, &first);
    s_table2 = nullptr;
}

TEST(Table2, KeepsItWhicheverSetterReplacesIt) {
    AGraphixFuncTable first = {}, second = {};
    DorviaFuncTable root = {};
    for (DorviaFuncTable* const next : {&root, static_cast<DorviaFuncTable*>(nullptr)}) {
        AGraphixHelper::s_table = &first;
        s_table2 = nullptr;
        root.graphix = &second;
        DFunctionsHelper::setFuncTable(next);
        EXPECT_EQ(s_table2, &first);
    }
    DFunctionsHelper::setFuncTable(nullptr);
    s_table2 = nullptr;
}
