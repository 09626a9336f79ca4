"""The pool of a Signal server: who played what in which week, in a database in memory."""

import datetime
import sqlite3
import threading

TABLE = """
create table plays (
    dj text, track_key text, week text, title text, artist text, lane text, city text,
    primary key (dj, track_key, week)
)
"""
EVENT_KEYS = ("track_key", "title", "artist", "lane", "city_bucket", "week")


class Pool:
    """May be used by several threads at once."""

    def __init__(self, min_djs=5, today=None):
        self.min_djs = min_djs
        self.today = today
        self.lock = threading.Lock()
        self.database = sqlite3.connect(":memory:", check_same_thread=False)
        self.database.execute(TABLE)

    def stats(self):
        with self.lock:
            row = self.database.execute(
                "select count(distinct dj), count(*), count(distinct track_key) from plays"
            ).fetchone()
        return {"djs": row[0], "plays": row[1], "tracks": row[2]}

    def add(self, dj, events):
        """Takes plays in; those that are there already don't count again."""
        rows = [(dj, *(event[key] for key in EVENT_KEYS)) for event in events]
        with self.lock:
            before = self.count(dj)
            self.database.executemany(
                "insert or ignore into plays (dj, track_key, title, artist, lane, city, week)"
                " values (?, ?, ?, ?, ?, ?, ?)",
                rows,
            )
            feeds = self.count(dj)
        return {"accepted": feeds - before, "you_feed": feeds}

    def erase(self, dj):
        with self.lock:
            return {
                "deleted": self.database.execute("delete from plays where dj = ?", (dj,)).rowcount
            }

    def landing(self, window, lane=None, city=None):
        """The chart of the weeks of which a day lies within the last `window` days."""
        today = self.today or datetime.date.today()
        first_week = today - datetime.timedelta(days=window + 6)
        rule = "week >= ? and (? is null or lane = ?) and (? is null or city = ?)"
        with self.lock:
            rows = self.database.execute(
                "select track_key, max(title), max(artist), count(distinct dj) as djs,"
                " count(*) as plays, group_concat(distinct lane)"
                f" from plays where {rule} group by track_key having djs >= ?"
                " order by djs desc, plays desc, track_key",
                (first_week.isoformat(), lane, lane, city, city, self.min_djs),
            ).fetchall()
        keys = ("track_key", "title", "artist", "djs", "plays", "lanes")
        return {"min_djs": self.min_djs, "tracks": [dict(zip(keys, row)) for row in rows]}

    def count(self, dj):
        return self.database.execute("select count(*) from plays where dj = ?", (dj,)).fetchone()[0]
