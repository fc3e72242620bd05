#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <thread>
#include <vector>

#include "tests/library/opened_library.h"

namespace vetlo::testing {
namespace {

constexpr GUID kUnknown = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
const std::vector<GUID> kFactoryInterfaces = {IID_IUnknown, IID_IClassFactory, IID_ILibraryInfo};
const std::vector<GUID> kTamoInterfaces = {IID_IUnknown, IID__clsTamo, IID_IObjectWithPlatform};

class Library : public ::testing::Test {
 protected:
  // What stands in a place before an operation is to fill it.
  int anything_ = 0;
  void* place_ = &anything_;
  OpenedLibrary library_;
};

// ---- the class object

TEST_F(Library, GivesTheObjectOfItsClass) {
  for (const GUID& iid : kFactoryInterfaces) {
    EXPECT_EQ(library_.get_class_object(&CLSID_clsTamo, &iid, &place_), S_OK);
    ASSERT_NE(place_, nullptr);
    EXPECT_EQ(static_cast<IUnknown*>(place_)->Release(), 0U);
  }
}

TEST_F(Library, RefusesAClassThatItDoesNotHave) {
  EXPECT_EQ(library_.get_class_object(&kUnknown, &IID_IClassFactory, &place_),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(place_, nullptr);
}

TEST_F(Library, RefusesAnInterfaceThatItsClassObjectDoesNotHave) {
  EXPECT_EQ(library_.get_class_object(&CLSID_clsTamo, &IID__clsTamo, &place_), E_NOINTERFACE);
  EXPECT_EQ(place_, nullptr);
  EXPECT_EQ(library_.can_unload_now(), S_OK) << "what was made for it is gone";
}

TEST_F(Library, NeedsAPlaceForTheClassObject) {
  EXPECT_EQ(library_.get_class_object(&CLSID_clsTamo, &IID_IClassFactory, nullptr), E_POINTER);
  EXPECT_EQ(library_.get_class_object(&kUnknown, &IID_IClassFactory, nullptr), E_POINTER);
  EXPECT_EQ(library_.get_class_object(nullptr, &IID_IClassFactory, &place_), E_POINTER);
  EXPECT_EQ(library_.get_class_object(&CLSID_clsTamo, nullptr, &place_), E_POINTER);
  EXPECT_EQ(place_, nullptr);
}

TEST_F(Library, TellsItsNamesAndItsVersion) {
  LibraryFacts facts;
  EXPECT_EQ(library_.ClassObject<ILibraryInfo>(IID_ILibraryInfo)->GetFacts(&facts), S_OK);
  EXPECT_EQ(facts.type_library, "Vetlo");
  EXPECT_EQ(facts.text, "Vetlo V3.20");
  EXPECT_EQ(facts.version, "3.20");
  EXPECT_EQ(library_.ClassObject<ILibraryInfo>(IID_ILibraryInfo)->GetFacts(nullptr), E_POINTER);
}

// ---- new objects

TEST_F(Library, MakesAnObjectWithTheInterfaceThatIsAsked) {
  const auto factory = library_.Factory();
  for (const GUID& iid : kTamoInterfaces) {
    EXPECT_EQ(factory->CreateInstance(nullptr, iid, &place_), S_OK);
    ASSERT_NE(place_, nullptr);
    EXPECT_EQ(static_cast<IUnknown*>(place_)->Release(), 0U);
  }
}

TEST_F(Library, MakesNoObjectForAnInterfaceThatItDoesNotHave) {
  EXPECT_EQ(library_.Factory()->CreateInstance(nullptr, kUnknown, &place_), E_NOINTERFACE);
  EXPECT_EQ(place_, nullptr);
  EXPECT_EQ(library_.can_unload_now(), S_OK) << "what was made for it is gone";
}

TEST_F(Library, MakesNoObjectAsAPartOfAnother) {
  const auto outer = library_.NewTamo();
  for (const GUID& iid : {IID_IUnknown, IID__clsTamo}) {
    place_ = &anything_;
    EXPECT_EQ(library_.Factory()->CreateInstance(outer.get(), iid, &place_), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(place_, nullptr);
  }
}

TEST_F(Library, NeedsAPlaceForANewObject) {
  EXPECT_EQ(library_.Factory()->CreateInstance(nullptr, IID__clsTamo, nullptr), E_POINTER);
}

TEST_F(Library, MakesObjectsThatAreNotTheSame) {
  const auto one = library_.NewTamo();
  const auto other = library_.NewTamo();
  EXPECT_NE(Asked<IUnknown>(*one, IID_IUnknown).get(), Asked<IUnknown>(*other, IID_IUnknown).get());
}

// ---- the interfaces of an object

// One object, and the interfaces that it has.
struct ObjectCase {
  const char* name;
  std::vector<GUID> interfaces;
  Held<IUnknown> (*make)(const OpenedLibrary& library);

  friend std::ostream& operator<<(std::ostream& out, const ObjectCase& object) {
    return out << object.name;
  }
};

class Interfaces : public ::testing::TestWithParam<ObjectCase> {
 protected:
  OpenedLibrary library_;
  Held<IUnknown> object_ = GetParam().make(library_);
};

INSTANTIATE_TEST_SUITE_P(, Interfaces,
                         ::testing::Values(ObjectCase{"Factory", kFactoryInterfaces,
                                                      [](const OpenedLibrary& library) {
                                                        return library.ClassObject<IUnknown>(
                                                            IID_IUnknown);
                                                      }},
                                           ObjectCase{"Tamo", kTamoInterfaces,
                                                      [](const OpenedLibrary& library) {
                                                        return Asked<IUnknown>(*library.NewTamo(),
                                                                               IID_IUnknown);
                                                      }}),
                         [](const auto& test) { return test.param.name; });

TEST_P(Interfaces, AnObjectIsKnownByOneAddressOfItsRoot) {
  for (const GUID& iid : GetParam().interfaces) {
    const auto face = Asked<IUnknown>(*object_, iid);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(Asked<IUnknown>(*face, IID_IUnknown).get(), object_.get());
  }
}

TEST_P(Interfaces, FromEachInterfaceEachIsReached) {
  for (const GUID& from : GetParam().interfaces) {
    const auto first = Asked<IUnknown>(*object_, from);
    for (const GUID& to : GetParam().interfaces) {
      const auto second = Asked<IUnknown>(*first, to);
      ASSERT_NE(second, nullptr);
      EXPECT_EQ(Asked<IUnknown>(*second, from).get(), first.get()) << "and from there the first";
    }
  }
}

TEST_P(Interfaces, AnUnknownInterfaceIsRefusedAndNotCounted) {
  const std::uint32_t before = object_->AddRef();
  int anything = 0;
  for (const GUID& from : GetParam().interfaces) {
    void* place = &anything;
    EXPECT_EQ(Asked<IUnknown>(*object_, from)->QueryInterface(kUnknown, &place), E_NOINTERFACE);
    EXPECT_EQ(place, nullptr);
    EXPECT_EQ(object_->QueryInterface(from, nullptr), E_POINTER);
  }
  EXPECT_EQ(object_->Release(), before - 1);
}

TEST_P(Interfaces, ReferencesAreCountedTogether) {
  EXPECT_EQ(object_->AddRef(), 2U);
  for (const GUID& iid : GetParam().interfaces) {
    const auto face = Asked<IUnknown>(*object_, iid);
    EXPECT_EQ(face->AddRef(), 4U);
    EXPECT_EQ(object_->Release(), 3U);
  }
  EXPECT_EQ(object_->Release(), 1U);
}

TEST_P(Interfaces, AnInterfaceKeepsItsObject) {
  auto face = Asked<IUnknown>(*object_, GetParam().interfaces.back());
  object_.reset();
  EXPECT_EQ(library_.can_unload_now(), S_FALSE);
  EXPECT_NE(Asked<IUnknown>(*face, IID_IUnknown), nullptr);
  face.reset();
  EXPECT_EQ(library_.can_unload_now(), S_OK);
}

TEST_P(Interfaces, ReferencesAreCountedFromSeveralThreads) {
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&] {
      for (int turn = 0; turn < 20000; ++turn) {
        object_->AddRef();
        object_->Release();
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(object_->AddRef(), 2U);
  EXPECT_EQ(object_->Release(), 1U);
}

// ---- how long the library is needed

TEST_F(Library, IsNotNeededWithoutObjects) { EXPECT_EQ(library_.can_unload_now(), S_OK); }

TEST_F(Library, IsNeededUntilItsLastObjectIsGone) {
  auto factory = library_.Factory();
  EXPECT_EQ(library_.can_unload_now(), S_FALSE);
  auto tamo = library_.NewTamo();
  factory.reset();
  EXPECT_EQ(library_.can_unload_now(), S_FALSE);
  tamo.reset();
  EXPECT_EQ(library_.can_unload_now(), S_OK);
}

TEST_F(Library, IsNeededWhileItIsLocked) {
  EXPECT_EQ(library_.Factory()->LockServer(true), S_OK);
  EXPECT_EQ(library_.Factory()->LockServer(true), S_OK);
  EXPECT_EQ(library_.can_unload_now(), S_FALSE);
  EXPECT_EQ(library_.Factory()->LockServer(false), S_OK);
  EXPECT_EQ(library_.can_unload_now(), S_FALSE) << "every lock is taken off by itself";
  EXPECT_EQ(library_.Factory()->LockServer(false), S_OK);
  EXPECT_EQ(library_.can_unload_now(), S_OK);
}

TEST_F(Library, IsNotLetGoByALockThatIsNotThere) {
  const auto tamo = library_.NewTamo();
  EXPECT_EQ(library_.Factory()->LockServer(false), E_UNEXPECTED);
  EXPECT_EQ(library_.can_unload_now(), S_FALSE);
}

TEST(UnloadedLibrary, IsGoneFromTheProcess) {
  const std::string file = LibraryBesideProgram();
  ASSERT_FALSE(IsLoaded(file));
  {
    const OpenedLibrary library(file);
    EXPECT_TRUE(IsLoaded(file));
    EXPECT_NE(library.NewTamo(), nullptr);
  }
  EXPECT_FALSE(IsLoaded(file));
}

TEST(UnloadedLibrary, CanBeLoadedAgain) {
  for (int turn = 0; turn < 3; ++turn) {
    const OpenedLibrary library;
    EXPECT_EQ(library.NewTamo()->LenByte("", nullptr), E_POINTER);
    EXPECT_EQ(library.can_unload_now(), S_OK) << "it begins anew";
  }
}

}  // namespace
}  // namespace vetlo::testing
