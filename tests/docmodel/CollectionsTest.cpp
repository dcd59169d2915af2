// What `Documents`, `Fields` and `Parameters` have in common, and where they differ.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "ErrorOf.h"
#include "docmodel/Document.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

auto Get(const Documents& all, const NameOrIndex& which) { return all.Child(which); }
auto Get(const Fields& all, const NameOrIndex& which) { return all.Field(which); }
auto Get(const Parameters& all, const NameOrIndex& which) { return all.Parameter(which); }
int Add(Documents& all, StringView name) { return all.AddChild(name); }
int Add(Fields& all, StringView name) { return all.AddField(name, u"v"); }
int Add(Parameters& all, StringView name) { return all.AddParameter(name, u"v"); }
bool Remove(Documents& all, const NameOrIndex& which) { return all.RemoveChild(which); }
bool Remove(Fields& all, const NameOrIndex& which) { return all.RemoveField(which); }
bool Remove(Parameters& all, const NameOrIndex& which) { return all.RemoveParameter(which); }

template <class All>
class Collections : public ::testing::Test {};
using Kinds = ::testing::Types<Documents, Fields, Parameters>;
TYPED_TEST_SUITE(Collections, Kinds);

TYPED_TEST(Collections, TakeWholeNumbersAndDoublesAsIndexes) {
  TypeParam all;
  for (const StringView name : {u"2", u"1", u"0"}) Add(all, name);
  const std::vector<std::pair<NameOrIndex, StringView>> cases = {
      {0, u"2"},  {2, u"0"}, {std::int16_t{1}, u"1"}, {1.0, u"1"},  {0.5, u"2"},  {1.5, u"0"},
      {2.1, u""}, {3, u""},  {2147483647, u""},       {1e300, u""}, {u"2", u"2"}, {u"3", u""}};
  for (const auto& [which, name] : cases) EXPECT_EQ(Get(all, which)->Name(), name);
  for (const NameOrIndex& which : std::initializer_list<NameOrIndex>{-1, -0.6, -1e300}) {
    EXPECT_EQ(ErrorOf([&] { (void)Get(all, which); }), 9);
    EXPECT_EQ(ErrorOf([&] { Remove(all, which); }), 9);
  }
}

TYPED_TEST(Collections, GiveNewElementsOutsideForWhatIsAbsent) {
  TypeParam all;
  for (const NameOrIndex& which : std::initializer_list<NameOrIndex>{0, -1, u"x", u""}) {
    Get(all, which)->SetName(u"x");
    EXPECT_EQ(Get(all, which)->Name(), u"");
    EXPECT_FALSE(Remove(all, which));
    EXPECT_EQ(all.Count(), 0);
  }
}

TYPED_TEST(Collections, GrowBeforeTheNameIsCheckedAndLoseTheFirstMatch) {
  TypeParam all;
  for (const StringView name : {u"a", u"x"}) Add(all, name);
  EXPECT_EQ(ErrorOf([&] { Add(all, u"a b"); }), 32);
  EXPECT_EQ(ErrorOf([&] { Add(all, u"x<y"); }), 33);
  EXPECT_EQ(Add(all, u"x"), 4);
  EXPECT_TRUE(Remove(all, u"x"));
  EXPECT_EQ(Get(all, u""), Get(all, 1));
  EXPECT_EQ(Get(all, u"x"), Get(all, 3));
  EXPECT_TRUE(Remove(all, 0));
  EXPECT_FALSE(Remove(all, u"a") || Remove(all, 3));
  EXPECT_EQ(Remove(all, u"X"), (!std::is_same_v<TypeParam, Fields>)) << "fields mind the case";
}

TEST(Lookups, DifferInComparisonAndInTheMatchTheyTake) {
  Documents childs;
  Fields fields;
  Parameters parameters;
  for (const StringView name : {u"a", u"B", u"b", u"\u00C4", u"\u00E4", u"b"}) {
    Add(childs, name), Add(fields, name), Add(parameters, name);
  }
  const auto at = [](const auto& all, const auto& element) {
    int i = all.Count() - 1;
    while (i >= 0 && Get(all, i) != element) --i;
    return i;
  };
  using Positions = std::vector<int>;
  const std::vector<std::pair<StringView, Positions>> cases = {
      {u"a", {0, -1, -1, 0, 0, 0, 0, 0, 0}},     {u"A", {0, -1, -1, -1, 0, -1, -1, 0, 0}},
      {u"b", {1, 2, 5, 2, 1, 5, 5, 5, 5}},       {u"B", {1, 2, 5, 1, 1, 1, 1, 5, 5}},
      {u"\u00E4", {3, 4, -1, 4, 3, 4, 4, 4, 4}}, {u"\u00C4", {3, 4, -1, 3, 3, 3, 3, 4, 4}}};
  for (const auto& [name, positions] : cases) {
    Positions found;
    for (const int rank : {0, 1, 2}) found.push_back(at(childs, childs.Child(name, rank)));
    found.push_back(at(fields, fields.Field(name)));
    found.push_back(at(parameters, parameters.Parameter(name)));
    for (const bool any : {false, true}) {
      found.push_back(at(fields, fields.SearchField(name, any)));
      found.push_back(at(childs, childs.SearchChild2(name, any)));
    }
    EXPECT_EQ(found, positions);
  }
}

TEST(Childs, AreInsertedWhereTheIndexSays) {
  Documents childs;
  childs.AddChild(u"a");
  for (const auto& [given, index] : std::vector<std::pair<int, int>>{{0, 0}, {-5, 2}, {3, 3}}) {
    int place = given;
    EXPECT_EQ(childs.AddChild(ToText(given), place), index);
    EXPECT_EQ(childs.Child(place)->Name(), ToText(given));
  }
  int place = 1;
  EXPECT_EQ(ErrorOf([&] { childs.AddChild(u"x\"", place); }), 33);
  EXPECT_EQ(childs.Child(1)->Name() + childs.Child(2)->Name(), u"a");
  EXPECT_EQ(ErrorOf([&] { childs.AddChild(u"x", place = 6); }), 9);
}

TEST(FieldNames, AreFoundThroughEveryChange) {
  constexpr int kNames = 3000;  // enough for names whose 16-bit hashes are the same
  std::mt19937 random(7);       // NOLINT(*-msc51-cpp): the same changes in every run
  auto fields = std::make_unique<Fields>();
  std::vector<String> names;  // what the fields are called, in order
  const auto check = [&](const String& name) {
    const auto hit = std::find(names.begin(), names.end(), name);
    ASSERT_EQ(fields->IndexOf(name), hit == names.end() ? -1 : hit - names.begin());
  };
  for (int step = 0; step < 5000; ++step) {
    const String name = u"name" + ToText(static_cast<int>(random() % kNames));
    const auto at = static_cast<int>(random() % (names.size() + 1));
    const auto action = random() % 5;
    if (step < 2000 || action == 0) {
      if (step % 2 == 0) check(name);  // as a reader looks a name up before it adds it
      fields->AddField(name, u"");
      names.push_back(name);
    } else if (at == static_cast<int>(names.size()) || step == 3000) {
      fields->Sort(true);
      std::sort(names.begin(), names.end());
    } else if (action < 3) {
      EXPECT_EQ(ErrorOf([&] { fields->Field(at)->SetName(u"no good"); }), 32);
      fields->Field(at)->SetName(names[static_cast<size_t>(at)] = name);
    } else {
      const auto removed = fields->Field(at);
      EXPECT_TRUE(fields->RemoveField(at));
      names.erase(names.begin() + at);
      removed->SetName(u"elsewhere");
    }
    check(name);
    check(u"name" + ToText(step % kNames));
    if (step % 100 == 0) std::for_each(names.begin(), names.end(), check);
  }
  check(u"elsewhere");
  const auto survivor = fields->Field(0);
  fields.reset();
  survivor->SetName(u"alone");
  EXPECT_EQ(survivor->Name(), u"alone");
}

TEST(Sorting, MovesEqualNamesAsExchangesDo) {
  const std::tuple<StringView, const char*, const char*> cases[] = {
      {u"", "0", "0"},
      {u"b c a", "201", "102"},
      {u"b b a", "210", "012"},
      {u"c a b b a c a b c a", "1469372580", "0582736419"},
      {u"\uFFFD \U0001F600 \u00E9 ab a B  A", "67543210", "01234576"}};
  for (const auto& [names, ascending, descending] : cases) {
    for (const bool ascendent : {true, false}) {
      Fields fields;
      Documents childs;
      for (const StringView name : Split(names, u' ')) {
        const int position = childs.AddChild(name);
        childs.Child(position)->SetVersion(ToText(position));
        fields.AddField(name, ToText(position));
      }
      fields.Sort(ascendent);
      childs.Sort(ascendent);
      std::string orderOfFields, orderOfChilds;
      for (const Field& field : fields) orderOfFields += ToUtf8(field.Value());
      for (const Document& child : childs) orderOfChilds += ToUtf8(child.Version());
      EXPECT_EQ(orderOfFields, ascendent ? ascending : descending);
      EXPECT_EQ(orderOfChilds, orderOfFields);
    }
  }
}

}  // namespace
}  // namespace quenmar
