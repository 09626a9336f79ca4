"""The Signal server for tests and the demo, over real HTTP.

signal_server_test.py --server FILE
"""

import json
import subprocess
import sys
import tempfile
import unittest
import urllib.error
import urllib.parse
import urllib.request

SERVER = sys.argv[sys.argv.index("--server") + 1]
TODAY = "2026-11-20"  # a Friday
THIS_WEEK = "2026-11-16"


def play(key, week=THIS_WEEK, lane="House", city="Detroit"):
    return {"track_key": key, "title": f"Title {key}", "artist": "Artist", "lane": lane,
            "city_bucket": city, "week": week}


class ServerCase(unittest.TestCase):
    options = ()

    def setUp(self):
        self.process = subprocess.Popen(
            [sys.executable, "-B", SERVER, "--today", TODAY, *self.options],
            stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end)
        self.url = self.process.stdout.readline().removeprefix("Listening on ").strip()

    def end(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def ask(self, path, body=None, headers=None):
        """Status and answer."""
        data = body if body is None or isinstance(body, bytes) else json.dumps(body).encode()
        request = urllib.request.Request(f"{self.url}/{path}", data, headers or {})
        try:
            with urllib.request.urlopen(request) as answer:
                return answer.status, json.load(answer)
        except urllib.error.HTTPError as error:
            with error:
                return error.code, json.load(error)

    def contribute(self, dj, *events):
        status, answer = self.ask("events", {"dj_hash": dj, "events": list(events)})
        self.assertEqual(status, 200)
        return answer

    def chart(self, **query):
        status, answer = self.ask("landing?" + urllib.parse.urlencode(query))
        self.assertEqual(status, 200)
        return [(row["track_key"], row["djs"], row["plays"]) for row in answer["tracks"]]


class PoolTest(ServerCase):
    options = ("--min-djs", "2")

    def test_an_empty_pool(self):
        self.assertEqual(self.ask("health"), (200, {"ok": True}))
        self.assertEqual(self.ask("stats"), (200, {"djs": 0, "plays": 0, "tracks": 0}))
        self.assertEqual(self.ask("landing?window=30"), (200, {"min_djs": 2, "tracks": []}))

    def test_counts_a_play_once_for_each_dj_track_and_week(self):
        first = self.contribute("A", play("x"), play("y"), play("x", "2026-11-09"))
        self.assertEqual(first, {"accepted": 3, "you_feed": 3})
        again = self.contribute("A", play("x"), play("z"))
        self.assertEqual(again, {"accepted": 1, "you_feed": 4})
        self.assertEqual(self.contribute("A"), {"accepted": 0, "you_feed": 4})
        self.contribute("B", play("x"))
        self.assertEqual(self.ask("stats")[1], {"djs": 2, "plays": 5, "tracks": 3})

    def test_shows_what_enough_djs_play_the_most_played_first(self):
        for dj in "ABC":
            self.contribute(dj, play("three"))
        for dj in "AB":
            self.contribute(dj, play("two"), play("often"), play("often", "2026-11-09"))
        self.contribute("A", play("one"))
        self.assertEqual(self.chart(window=30), [("three", 3, 3), ("often", 2, 4), ("two", 2, 2)])

    def test_shows_the_names_and_lanes_of_a_track(self):
        self.contribute("A", play("x", lane="House"))
        self.contribute("B", play("x", lane="Techno"))
        row = self.ask("landing?window=7")[1]["tracks"][0]
        self.assertEqual((row["title"], row["artist"]), ("Title x", "Artist"))
        self.assertEqual(sorted(row["lanes"].split(",")), ["House", "Techno"])

    def test_looks_back_as_far_as_asked(self):
        for dj in "AB":
            self.contribute(dj, play("now"), play("old", "2026-10-12"), play("edge", "2026-11-09"))
        self.assertEqual([row[0] for row in self.chart(window=5)], ["edge", "now"])
        self.assertEqual([row[0] for row in self.chart(window=4)], ["now"])
        self.assertEqual(len(self.chart(window=90)), 3)

    def test_filters_by_lane_and_city(self):
        for dj in "AB":
            self.contribute(dj, play("x", lane="R&B", city="Zürich"), play("y", city="Leeds"))
        self.assertEqual([row[0] for row in self.chart(window=7, lane="R&B")], ["x"])
        self.assertEqual([row[0] for row in self.chart(window=7, city="Zürich")], ["x"])
        self.assertEqual(self.chart(window=7, lane="R&B", city="Leeds"), [])
        self.assertEqual(self.chart(window=7, lane=""), [])

    def test_erases_what_a_dj_shared(self):
        self.contribute("A", play("x"), play("y"))
        self.contribute("B", play("x"))
        self.assertEqual(self.ask("leave", {"dj_hash": "A"}), (200, {"deleted": 2}))
        self.assertEqual(self.ask("leave", {"dj_hash": "A"}), (200, {"deleted": 0}))
        self.assertEqual(self.ask("stats")[1], {"djs": 1, "plays": 1, "tracks": 1})

    def test_refuses_what_it_does_not_know(self):
        for path, body in (("nothing", None), ("events", None), ("stats", b"{}")):
            self.assertEqual(self.ask(path, body)[0], 404, path)
        bad = {**play("x")}
        del bad["week"]
        for body in (b"", b"[]", b"no JSON", b"{}", {"dj_hash": 7}, {"dj_hash": "A"},
                     {"dj_hash": "A", "events": {}}, {"dj_hash": "A", "events": [bad]}):
            self.assertEqual(self.ask("events", body)[0], 400, body)
        self.assertEqual(self.ask("leave", {})[0], 400)
        self.assertEqual(self.ask("landing?window=soon")[0], 400)

    def test_serves_below_a_path_too(self):
        self.assertEqual(self.ask("crew/of/leeds/health"), (200, {"ok": True}))


class KeyTest(ServerCase):
    options = ("--key", "secret")

    def test_insists_on_its_key(self):
        self.assertEqual(self.ask("stats")[0], 401)
        self.assertEqual(self.ask("stats", headers={"X-API-Key": "other"})[0], 401)
        self.assertEqual(self.ask("leave", {"dj_hash": "A"})[0], 401)
        self.assertEqual(self.ask("stats", headers={"X-API-Key": "secret"})[0], 200)


class LimitTest(ServerCase):
    options = ("--most-requests", "2")

    def test_answers_so_many_requests_in_a_minute(self):
        self.assertEqual([self.ask("health")[0] for _ in range(3)], [200, 200, 429])


class SeedTest(ServerCase):
    def setUp(self):
        scan = {"tracks": [{"displayArtist": "Daft Punk", "displayTitle": "One More Time",
                            "genre": "House"},
                           {"displayArtist": "", "displayTitle": "Untagged", "genre": " "}]}
        with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
            json.dump(scan, file)
            file.flush()
            self.options = ("--seed-djs", "30", "--seed-scan", file.name)
            super().setUp()

    def test_lets_invented_djs_play_the_library_and_more(self):
        rows = {row["track_key"]: row for row in self.ask("landing?window=90")[1]["tracks"]}
        self.assertGreater(len(rows), 3)
        self.assertEqual(rows["3b875567370c54066fe0"]["title"], "One More Time")
        self.assertEqual(self.ask("stats")[1]["djs"], 30)
        self.assertNotIn("Untagged", [row["title"] for row in rows.values()])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
