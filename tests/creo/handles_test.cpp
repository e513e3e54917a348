// The table of handles that adapters use, with objects that come and go at the same address.
#include "creo/handles.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using creo::ProMdl;
using Table = creo::HandleTable<creo::MdlTag, const int*>;

TEST(Handles, AnObjectKeepsItsHandleUntilItIsForgotten) {
  const int gear = 1, plate = 2;
  Table table;
  const ProMdl first = table.handleOf(&gear), second = table.handleOf(&plate);
  EXPECT_TRUE(first && second && first != second);
  EXPECT_EQ(first, table.handleOf(&gear));
  EXPECT_EQ(&gear, table.find(first));
  table.forget(&gear);
  EXPECT_FALSE(table.find(first));
  EXPECT_EQ(&plate, table.find(second));
  const ProMdl again = table.handleOf(&gear);  // another model that lies where the first one lay
  EXPECT_NE(first, again);
  EXPECT_FALSE(table.find(first));
  EXPECT_EQ(&gear, table.find(again));
}

TEST(Handles, WhatIsNoHandleFindsNothing) {
  const int gear = 1;
  Table table;
  EXPECT_FALSE(table.find({}));
  const ProMdl handle = table.handleOf(&gear);
  table.forget(nullptr);
  EXPECT_FALSE(table.find({}));
  EXPECT_FALSE(table.find({handle.value + 1}));
  EXPECT_FALSE(table.find({handle.value & 0xFFFFFFFFU}));
  EXPECT_FALSE(table.find({~std::uint64_t{0}}));
}

TEST(Handles, PlacesAreUsedAgainAndHandlesAreNot) {
  const std::vector<int> models(8);
  Table table;
  std::set<ProMdl> given;
  for (int round = 0; round < 1000; ++round) {
    for (const int& model : models) EXPECT_TRUE(given.insert(table.handleOf(&model)).second);
    EXPECT_EQ(models.size(), table.size());
    // An erasure that tells nothing leaves the first one.
    table.keepOnly([&](const int* model) { return model == models.data(); });
    EXPECT_EQ(1U, table.size());
    table.forget(models.data());
  }
  for (const ProMdl& handle : given) ASSERT_FALSE(table.find(handle));
  for (const int& model : models)
    EXPECT_GT(models.size(), table.handleOf(&model).value & 0xFFFFFFFFU) << "no new place";
}

}  // namespace
