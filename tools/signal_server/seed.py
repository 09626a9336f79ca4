"""Plays of invented DJs, so that a demo has a chart to show."""

import datetime
import hashlib
import random
import uuid

WEEKS = 14
CITIES = ("Detroit", "Berlin", "Leeds", "")
STRANGERS = (
    ("Nadia Vale", "Glasshouse", "House"),
    ("The Late Ferry", "Cold Harbour", "Techno"),
    ("Okoro & Finch", "Paper Suns", "Afro House"),
    ("Marlow", "Second Hand Moon", "Disco"),
    ("Hollow Pine", "Understory", "Drum & Bass"),
)


def track_key(artist, title):
    joined = f"{artist.lower()}|{title.lower()}".strip()
    return hashlib.sha256(joined.encode()).digest()[:10].hex()


def tracks_of_scan(scan):
    """(artist, title, lane) of each track that `tarnwick-cli --json scan` told of."""
    return [
        (track["displayArtist"], track["displayTitle"], track["genre"])
        for track in scan["tracks"]
        if track["displayTitle"] and track["genre"].strip()
    ]


def monday(day):
    return day - datetime.timedelta(days=day.weekday())


def weeks_until(day):
    return [monday(day) - datetime.timedelta(weeks=back) for back in range(WEEKS)]


def event(track, city, week):
    artist, title, lane = track
    return {
        "track_key": track_key(artist, title),
        "title": title,
        "artist": artist,
        "lane": lane,
        "city_bucket": city,
        "week": week.isoformat(),
    }


def fill(pool, library, djs, day, seed=7):
    """Lets so many invented DJs play a few tracks often and many seldom, some of them unknown to
    the library."""
    draw = random.Random(seed)
    hits = draw.sample(library, min(60, len(library))) + list(STRANGERS)
    draw.shuffle(hits)
    weights = [1 / (place + 3) for place in range(len(hits))]
    for _ in range(djs):
        dj = str(uuid.UUID(int=draw.getrandbits(128), version=4)).upper()
        city = draw.choice(CITIES)
        for week in weeks_until(day):
            played = draw.choices(hits, weights, k=draw.randint(0, 12))
            pool.add(dj, [event(track, city, week) for track in played])
