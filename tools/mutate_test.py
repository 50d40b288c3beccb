#!/usr/bin/env python3
"""Tries the mistakes of tools/mutate.py on small pieces of code, and what surrounds them: the order
in which they are drawn, what is kept of a run, what is told at its end."""

import dataclasses
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True

from mutation import report, rooms
from mutation.bench import Done
from mutation.constants import Enumerators, changed_char, changed_number, changed_text
from mutation.mutants import logic_files, mutants_of
from mutation.sample import Results, Sample, drawn
from mutation.source import BLOCK, CLASS, ENUM, NAMESPACE, VALUES, Source
from mutation.trial import EQUAL, NOTICED, STILLBORN, SURVIVED, Plan, try_mutant

PATH = "src/link/piece.cpp"


def mutants(code, operator=None):
    source = Source(PATH, code)
    return [mutant for mutant in mutants_of(source, Enumerators([source]))
            if operator in (None, mutant.operator)]


def changes(code, operator):
    """What an operator makes of code, without needless blanks."""
    return [report.one_line(mutant.applied(code)) for mutant in mutants(code, operator)]


def body(statements):
    return "void F() {\n" + statements + "\n}"


def changed_body(statements, operator):
    """What an operator makes of statements in a function."""
    return [change.removeprefix("void F() {").removesuffix("}").strip()
            for change in changes(body(statements), operator)]


class Reading(unittest.TestCase):
    def kinds(self, code):
        return [(token.kind, token.text) for token in Source(PATH, code).tokens]

    def test_leaves_out_comments_and_the_preprocessor(self):
        code = '#include "a.h"\n#define X \\\n    1\n// a < b\n/* 2\n */ c'
        self.assertEqual(self.kinds(code), [("name", "c")])

    def test_keeps_texts_and_characters_whole(self):
        code = r"""f("a // \" b", 'x', '\'', R"(1 " 2)", 200'000)"""
        kinds = [kind for kind, _ in self.kinds(code) if kind not in ("sign", "name")]
        self.assertEqual(kinds, ["text", "char", "char", "raw", "number"])

    def test_tells_a_template_from_a_comparison(self):
        source = Source(PATH, "std::vector<std::array<int, 3>> a; b < c; d >> e;")
        inside = [token.text for token in source.tokens if token.in_template]
        self.assertEqual(inside, ["<", "std", "::", "array", "<", "int", ",", "3", ">>"])

    def test_knows_what_braces_hold(self):
        source = Source(PATH, """
            namespace n { class C : public B { C() : a_(1), b_{2} { x(); } }; enum class E { A };
            const auto f = [a](int b) -> std::optional<int> { return b; };
            int g() const { for (int i : {1, 2}) { h({3}); } switch (a) { case 4: { k(); } } }
            constexpr std::array<int, 2> t = {5, 6}; }""")
        held = [source.holds[brace] for brace in sorted(source.holds)]
        self.assertEqual(held, [NAMESPACE, CLASS, VALUES, BLOCK, ENUM, BLOCK, BLOCK, VALUES, BLOCK,
                                VALUES, BLOCK, BLOCK, VALUES])


class Operators(unittest.TestCase):
    def test_turn_a_comparison(self):
        self.assertEqual(changes("bool x = a == b;", "comparison"), ["bool x = a != b;"])
        self.assertEqual(changes("bool x = a <= b;", "comparison"), ["bool x = a >= b;"])

    def test_leave_templates_and_declared_operators(self):
        code = "bool operator==(const X&) const = default;\nstd::vector<int> a;"
        self.assertEqual(changes(code, "comparison") + changes(code, "bound"), [])

    def test_move_a_bound(self):
        self.assertEqual(changes("bool x = a < b;", "bound"), ["bool x = a <= b;"])
        self.assertEqual(changes("bool x = a >= b;", "bound"), ["bool x = a > b;"])
        self.assertEqual(changes("bool x = a == b;", "bound"), [])

    def test_take_and_for_or(self):
        self.assertEqual(changes("bool x = a && b;", "logic"), ["bool x = a || b;"])
        self.assertEqual(changes("void f(T&& a, auto&& b);", "logic"), [])

    def test_calculate_otherwise(self):
        self.assertEqual(changes("int x = a + b;", "arithmetic"), ["int x = a - b;"])
        self.assertEqual(changed_body("++a;", "arithmetic"), ["--a;"])
        for code in ("const char* x;", 'auto x = "a" + b;', "void f(const X& x);"):
            self.assertEqual(changes(code, "arithmetic"), [])
        self.assertEqual(changed_body("for (;; ++i) {}", "arithmetic"), [])

    def test_change_a_constant(self):
        self.assertEqual(changes("int x = 7;", "constant"), ["int x = 6;", "int x = 8;"])
        self.assertEqual(changes("Flag x = True;", "constant"), ["Flag x = False;"])
        self.assertEqual(changes("char x = 'a';", "constant"), ["char x = 'b';"])

    def test_leave_constants_that_are_no_rule(self):
        for code in ("static_assert(sizeof(X) == 4);", "std::array<int, 3> a;", "int a[4];",
                     "virtual void f() = 0;", "enum E { A = 1 };", "using X = Y<2>;"):
            self.assertEqual(mutants(code), [], code)

    def test_take_the_next_enumerator(self):
        code = "enum class E { A, B };\nE x = E::A;\nE y = E::B;\nint z = F::A;"
        self.assertEqual([mutant.replacement for mutant in mutants(code, "constant")], ["B", "A"])
        plain = "enum E { A, B };\n" + body("return A;\na.A = b;")
        self.assertEqual([mutant.line for mutant in mutants(plain, "constant")], [3])
        used = "enum class E { A, B };\nusing enum E;\nE x[] = {A};"
        self.assertEqual([mutant.replacement for mutant in mutants(used, "constant")], ["B"])

    def test_change_a_text_that_is_seen(self):
        self.assertEqual(changes('auto x = "abc";', "text"), ['auto x = "axc";'])
        self.assertEqual(changed_body('throw Fault("abc");\nlog.AppendLog("abc");', "text"), [])
        self.assertEqual(changes('#include "abc"\nstatic_assert(a, "abc");', "text"), [])

    def test_take_another_index(self):
        self.assertEqual(changes("int x = a[i];", "index"), ["int x = a[0];", "int x = a[i + 1];"])
        self.assertEqual(changes("int x = a[2];", "index"), ["int x = a[0];", "int x = a[3];"])
        self.assertEqual(changes("int x = a[0];", "index"), ["int x = a[1];"])
        self.assertEqual(changes("int x = a[i & 3];", "index"),
                         ["int x = a[(i & 3) + 1];", "int x = a[0];"])
        for code in ("auto f = [i] { return 1; };", "[[nodiscard]] int f();", "int a[n];",
                     'int x = a["b"];'):
            self.assertEqual(changes(code, "index"), [], code)

    def test_negate_a_condition(self):
        self.assertEqual(changed_body("if (a) {}", "negate"), ["if (!(a)) {}"])
        self.assertEqual(changed_body("while (!a) {}", "negate"), ["while (a) {}"])
        self.assertEqual(changed_body("if (int n = f(); n < 2) {}", "negate"),
                         ["if (int n = f(); !(n < 2)) {}"])
        self.assertEqual(changed_body("if (!a && b) {}", "negate"),
                         ["if (a && b) {}", "if (!(!a && b)) {}"])
        self.assertEqual(changed_body("return !a;", "negate"), ["return a;"])
        for code in ("if (const auto x = f()) {}", "if (a == b) {}", "for (;;) {}",
                     "for (int a : b) {}"):
            self.assertEqual(changed_body(code, "negate"), [], code)

    def test_exchange_the_branches_of_a_choice(self):
        self.assertEqual(changed_body("x = a ? b : f(c, d);", "negate"),
                         ["x = a ? f(c, d) : b;"])
        self.assertEqual(changed_body("x = a ? b : c ? d : e;", "negate"),
                         ["x = a ? (c ? d : e) : b;", "x = a ? b : c ? e : d;"])

    def test_swap_arguments(self):
        self.assertEqual(changed_body("f(a, g(b, c));", "swap"),
                         ["f(g(b, c), a);", "f(a, g(c, b));"])
        self.assertEqual(changed_body("return Point{a, b};", "swap"), ["return Point{b, a};"])
        for code in ("x = f(a, a);", "x = std::max(a, b);", "x = {a, b};",
                     "x = B{.A = a, .B = b};", "x = f<a, b>(c);"):
            self.assertEqual(changed_body(code, "swap"), [], code)
        for code in ("void f(int a, const B& b) {}", "X f(A a, B* b);", "X f(A a, B b = {}) {}"):
            self.assertEqual(changes(code, "swap"), [], code)

    def test_drop_a_call_or_an_assignment(self):
        self.assertEqual(changed_body("f(a);\nb = 1;", "drop"), ["; b = 1;", "f(a); ;"])
        self.assertEqual(changed_body("if (a) {\n    b.c(\n        d);\n}", "drop"),
                         ["if (a) { ; }"])
        self.assertEqual(changed_body("switch (a) {\n    case 1:\n        f();\n}", "drop"),
                         ["switch (a) { case 1: ; }"])
        self.assertEqual(changed_body("static_cast<void>(f());", "drop"), [";"])

    def test_leave_other_statements(self):
        for code in ("int a = 1;", "const auto a = f();", "std::vector<int> a(2);\na.b();",
                     "return f();", "break;", "throw a();", "const X& a = b;", "X* a = b;",
                     "using enum E;", "a.reserve(2);"):
            dropped = [mutant.old.strip() for mutant in mutants(body(code), "drop")]
            self.assertIn(dropped, ([], ["a.b();"]), code)
        self.assertEqual(changes("class C { C(int a); void f(); };", "drop"), [])

    def test_drop_a_guard_but_no_value_that_is_used(self):
        self.assertEqual(changed_body("const BusyGuard busy(flag);\nf();", "drop"),
                         ["; f();", "const BusyGuard busy(flag); ;"])
        self.assertEqual(changed_body("Reader lines(file);\nreturn lines;", "drop"), [])

    def test_reach_into_lambdas(self):
        self.assertEqual(changed_body("each([&](int a) {\n    f(a);\n    return 1;\n});", "drop"),
                         [";", "each([&](int a) { ; return 1; });"])


class Constants(unittest.TestCase):
    def test_numbers_keep_their_form(self):
        for number, changed in (("0", ["1"]), ("0x0F", ["0x10", "0x0E"]),
                                ("0b01", ["0b10", "0b00"]), ("5U", ["6U", "4U"]),
                                ("200'000", ["200001", "199999"]),
                                ("010", ["9", "7"]), ("1.486", ["1.487"]), ("12.0", ["13.0"]),
                                ("1E-05", ["2.0E-05"]), ("0.99", ["1.00"])):
            self.assertEqual(changed_number(number), changed, number)

    def test_characters_stay_characters(self):
        for char, changed in ((r"'\r'", [r"'\n'"]), ("'&'", [r"'\''"]), ("'['", [r"'\\'"]),
                              (r"'\x01'", [])):
            self.assertEqual(changed_char(char), changed, char)

    def test_texts_stay_texts(self):
        for text, changed in (('""', None), ('", "', '","'), (r'"\n"', '""'), (r'"\na"', r'"\nx"'),
                              ('"x"', '"y"'), ('u8"ab"', 'u8"ax"')):
            self.assertEqual(changed_text(text), changed, text)


class Names(unittest.TestCase):
    def test_stay_when_lines_are_added_above(self):
        code = "int x = a + 1;\n"
        before = {mutant.id for mutant in mutants(code)}
        after = {mutant.id for mutant in mutants("int y;\n\n" + code)}
        self.assertEqual(before, after)
        self.assertTrue(before)

    def test_are_unlike_even_for_like_lines(self):
        found = mutants(body("a(1);\na(1);"))
        self.assertEqual(len({mutant.id for mutant in found}), len(found))

    def test_tell_the_line(self):
        found = mutants("int a;\nint x = b < c;", "bound")
        self.assertEqual([mutant.line for mutant in found], [2])


class Drawing(unittest.TestCase):
    def setUp(self):
        self.many = mutants("".join(f"int x{i} = a{i} + {i + 10};\n" for i in range(40)))
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.kept = Path(folder.name, "results.jsonl")

    def test_is_the_same_for_a_seed_and_another_for_another(self):
        names = [[mutant.id for mutant in drawn(self.many, seed)] for seed in (1, 1, 2)]
        self.assertEqual(names[0], names[1])
        self.assertNotEqual(names[0], names[2])
        self.assertEqual(sorted(names[0]), sorted(names[2]))

    def test_gives_each_operator_its_share_from_the_beginning(self):
        operators = [mutant.operator for mutant in drawn(self.many, 1)]
        half = len(operators) // 2
        for operator in set(operators):
            self.assertAlmostEqual(operators[:half].count(operator),
                                   operators.count(operator) / 2, delta=1)

    def run_sample(self, size, verdict, anew=False):
        sample = Sample(drawn(self.many, 1), Results(self.kept), size, anew)
        tried = 0
        while mutant := sample.take():
            sample.record(mutant, verdict(mutant), "", 0)
            tried += 1
        return sample, tried

    def test_draws_another_for_one_that_does_not_compile(self):
        sample, tried = self.run_sample(
            10, lambda mutant: STILLBORN if mutant.operator == "arithmetic" else NOTICED)
        self.assertEqual(sample.counted(), 10)
        self.assertGreater(tried, 10)

    def test_goes_on_where_it_ended(self):
        self.run_sample(5, lambda mutant: NOTICED)
        sample, tried = self.run_sample(12, lambda mutant: NOTICED)
        self.assertEqual((tried, sample.reused, sample.counted()), (7, 5, 12))
        _, tried = self.run_sample(12, lambda mutant: NOTICED, anew=True)
        self.assertEqual(tried, 12)

    def test_reads_over_a_line_cut_off(self):
        self.run_sample(3, lambda mutant: SURVIVED)
        self.kept.write_text(self.kept.read_text() + '{"id": "ab')
        self.assertEqual(len(Results(self.kept).survivors()), 3)

    def test_forgets_a_survivor_noticed_since(self):
        self.run_sample(3, lambda mutant: SURVIVED)
        self.run_sample(1, lambda mutant: NOTICED, anew=True)
        self.assertEqual(len(Results(self.kept).survivors()), 2)


class Telling(unittest.TestCase):
    def setUp(self):
        self.two = mutants(body("a(1);"), "drop") + mutants("int x = b < c;", "bound")
        self.made = [(self.two[0], {"outcome": SURVIVED, "by": "", "seconds": 1}),
                     (self.two[1], {"outcome": NOTICED, "by": "link_tests A.B", "seconds": 1})]

    def test_counts_by_room(self):
        lines = report.table(self.made, ["common", "link"]).splitlines()
        self.assertEqual([line.split() for line in lines[1:]],
                         [[name, "2", "1", "1", "0", "0", "50.0", "%"] for name in ("link", "all")])
        self.assertEqual(report.share(self.made), 50)

    def test_lists_survivors_with_the_line_before_and_after(self):
        text = report.survivors_text(self.two, ["link"])
        self.assertIn(f"{self.two[0].id}  {PATH}:2  drop\n    - a(1);\n    + (dropped)", text)
        self.assertEqual(report.ids_in(text), {mutant.id for mutant in self.two})


class Rooms(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for name, code in (("src/low/a.h", ""), ("src/low/a.cpp", '#include "low/a.h"'),
                           ("src/low/b.h", ""), ("src/low/extra.cpp", '#include "low/b.h"'),
                           ("src/high/c.h", ""), ("src/high/frmC.cpp", '#include "low/b.h"'),
                           ("src/high/c.cpp", '#include "high/c.h"\n#include "low/a.h"'),
                           ("tests/low/b_test.cpp", '#include "low/b.h"'),
                           ("tests/high/c_test.cpp", '#include "support/s.h"'),
                           ("tests/support/s.h", '#include "high/c.h"')):
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(code)

    def test_are_told_by_the_includes(self):
        includes = rooms.Includes(self.root)
        self.assertEqual(includes.rooms(), ["low", "high"])
        seeing = rooms.programs_seeing(self.root, includes, ["high_tests", "low_tests"])
        self.assertEqual(seeing["src/low/a.cpp"], ["high_tests"])
        self.assertEqual(seeing["src/low/extra.cpp"], ["low_tests"])
        self.assertEqual(seeing["src/high/c.cpp"], ["high_tests"])
        self.assertEqual(rooms.seen_by_forms(self.root),
                         {"src/high/frmC.cpp", "src/low/b.h", "src/low/extra.cpp"})

    def test_hold_logic_apart_from_forms(self):
        self.assertNotIn("src/high/frmC.cpp", logic_files(self.root))
        self.assertIn("src/high/c.cpp", logic_files(self.root))


class FakeBench:
    """A tree of one file; says of each program what the test tells it to."""

    def __init__(self, folder, code):
        self.tree = Path(folder)
        self.target = self.tree / PATH
        self.target.parent.mkdir(parents=True)
        self.target.write_text(code)
        self.compiles = self.changes = True
        self.same = False
        self.failing = {}
        self.log = []

    def write(self, path, code):
        (self.tree / path).write_text(code)

    def build(self, programs):
        self.log.append(self.target.read_text())
        return self.compiles

    def changed_objects(self, since):
        return self.changes

    def same_when_optimized(self, path, mutated, original):
        return self.same

    def run_tests(self, program, only, limit):
        self.log.append((program, only))
        done = self.failing.get((program, only))
        return done or Done(0, "", 0, False)


class Trying(unittest.TestCase):
    CODE = "int x = b < c;"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.bench = FakeBench(folder.name, self.CODE)
        self.plan = Plan({PATH: ["a_tests", "link_tests"]},
                         {"a_tests": {"seconds": 1, "tests": {"A.B": 0.01}},
                          "link_tests": {"seconds": 9, "tests": {"C.D": 0.02, "C.E": 8.9}}})
        self.mutant = mutants(self.CODE, "bound")[0]

    def verdict(self):
        outcome, by, _ = try_mutant(self.bench, self.plan, self.mutant)
        self.assertEqual(self.bench.target.read_text(), self.CODE, "the file is put back")
        return outcome, by

    def test_runs_all_that_see_it_before_it_survives(self):
        self.assertEqual(self.verdict(), (SURVIVED, ""))
        mutated = "int x = b <= c;"
        self.assertEqual(self.bench.log, [mutated, ("link_tests", "-C.E"), mutated,
                                          ("a_tests", None), ("link_tests", "C.E")])

    def test_ends_at_the_first_program_that_fails(self):
        self.bench.failing["link_tests", "-C.E"] = Done(1, "[  FAILED  ] C.D (3 ms)", 0, False)
        self.assertEqual(self.verdict(), (NOTICED, "link_tests C.D"))
        self.assertEqual(len(self.bench.log), 2)

    def test_takes_an_end_by_the_limit_or_a_signal_for_noticed(self):
        self.bench.failing["a_tests", None] = Done(-9, "", 9, True)
        self.assertEqual(self.verdict(), (NOTICED, "a_tests time limit"))
        self.bench.failing["a_tests", None] = Done(-11, "", 0, False)
        self.assertEqual(self.verdict(), (NOTICED, "a_tests signal 11"))

    def test_sets_aside_what_does_not_compile_or_is_equal(self):
        self.bench.same = True
        self.assertEqual(self.verdict()[0], EQUAL)
        self.bench.changes = False
        self.assertEqual(self.verdict()[0], EQUAL)
        self.bench.compiles = False
        self.assertEqual(self.verdict()[0], STILLBORN)

    def test_knows_that_no_form_was_built(self):
        self.bench.changes = False
        self.mutant = dataclasses.replace(self.mutant, path="src/link/piece.h")
        self.bench.write(self.mutant.path, self.CODE)
        for of_forms, outcome in ((set(), EQUAL), ({self.mutant.path}, SURVIVED)):
            self.plan = Plan({self.mutant.path: ["link_tests"]},
                             {"link_tests": {"seconds": 1, "tests": {}}}, of_forms)
            self.assertEqual(self.verdict()[0], outcome)

    def test_limits_follow_the_measure(self):
        self.assertEqual(self.plan.limit("link_tests"), 45)
        self.assertEqual(self.plan.limit("a_tests"), 10)

    def test_runs_nothing_where_no_program_sees_it(self):
        self.plan = Plan({}, {})
        self.assertEqual(self.verdict()[0], SURVIVED)
        self.assertEqual(self.bench.log, [])


if __name__ == "__main__":
    unittest.main()
