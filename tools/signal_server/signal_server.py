#!/usr/bin/env python3
"""A small Signal server for tests and for the demo; see README.md."""

import argparse
import collections
import datetime
import hmac
import json
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import parse_qs, urlsplit

import pool
import seed

LARGEST_BODY = 64_000_000


class Refusal(Exception):
    """An answer of another status than 200."""

    def __init__(self, status, reason):
        super().__init__(reason)
        self.status = status


class Limit:
    """At most so many requests in a minute; None for any number."""

    def __init__(self, most):
        self.most = most
        self.lock = threading.Lock()
        self.moments = collections.deque()

    def count(self):
        if self.most is None:
            return
        with self.lock:
            now = time.monotonic()
            while self.moments and self.moments[0] < now - 60:
                self.moments.popleft()
            if len(self.moments) >= self.most:
                raise Refusal(429, "too many requests")
            self.moments.append(now)


def is_texts(event):
    return isinstance(event, dict) and all(isinstance(event.get(k), str) for k in pool.EVENT_KEYS)


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        self.answer({"health": self.health, "stats": self.stats, "landing": self.landing})

    def do_POST(self):
        self.answer({"events": self.events, "leave": self.leave})

    def health(self):
        return {"ok": True}

    def stats(self):
        return self.server.pool.stats()

    def landing(self):
        query = parse_qs(urlsplit(self.path).query, keep_blank_values=True)
        given = {name: values[-1] for name, values in query.items()}
        try:
            window = int(given.get("window", "30"))
        except ValueError:
            raise Refusal(400, "window is no number") from None
        return self.server.pool.landing(window, given.get("lane"), given.get("city"))

    def events(self):
        body = self.body()
        events = body.get("events")
        if not isinstance(events, list) or not all(is_texts(event) for event in events):
            raise Refusal(400, "events are no list of plays")
        return self.server.pool.add(body["dj_hash"], events)

    def leave(self):
        return self.server.pool.erase(self.body()["dj_hash"])

    def body(self):
        """The object that came, with the DJ's id in it."""
        try:
            body = json.loads(self.sent)
        except ValueError:
            raise Refusal(400, "the body is no JSON") from None
        if not isinstance(body, dict) or not isinstance(body.get("dj_hash"), str):
            raise Refusal(400, "dj_hash is missing")
        return body

    def answer(self, routes):
        try:
            self.sent = self.receive()
            self.server.limit.count()
            self.check_key()
            name = urlsplit(self.path).path.strip("/").split("/")[-1]
            if name not in routes:
                raise Refusal(404, "there is nothing here")
            self.reply(200, routes[name]())
        except Refusal as refusal:
            self.reply(refusal.status, {"error": str(refusal)})

    def receive(self):
        size = int(self.headers.get("Content-Length", "0"))
        if size > LARGEST_BODY:
            self.close_connection = True
            raise Refusal(413, "the body is too large")
        return self.rfile.read(size)

    def check_key(self):
        key = self.server.key
        given = self.headers.get("X-API-Key", "")
        if key and not hmac.compare_digest(key.encode(), given.encode("latin-1", "replace")):
            raise Refusal(401, "the access key is missing or wrong")

    def reply(self, status, content):
        body = json.dumps(content, ensure_ascii=False).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        """Nothing is logged: who asked for what is nobody's business."""


class Server(ThreadingHTTPServer):
    daemon_threads = True

    def __init__(self, options, filled):
        super().__init__(("127.0.0.1", options.port), Handler)
        self.pool = filled
        self.key = options.key
        self.limit = Limit(options.most_requests)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--port", type=int, default=0, help="default: any that is free")
    parser.add_argument("--key", default="", help="the access key to insist on")
    parser.add_argument("--min-djs", type=int, default=5, help="DJs before a track shows")
    parser.add_argument("--most-requests", type=int, help="in a minute")
    parser.add_argument("--today", type=datetime.date.fromisoformat, help="instead of today")
    parser.add_argument("--seed-djs", type=int, default=0, help="invented DJs to begin with")
    parser.add_argument("--seed-scan", type=argparse.FileType(encoding="utf-8"),
                        help="what they play: the output of tarnwick-cli --json scan")
    return parser.parse_args()


def main():
    options = arguments()
    filled = pool.Pool(options.min_djs, options.today)
    library = seed.tracks_of_scan(json.load(options.seed_scan)) if options.seed_scan else []
    seed.fill(filled, library, options.seed_djs, options.today or datetime.date.today())
    with Server(options, filled) as server:
        print(f"Listening on http://127.0.0.1:{server.server_address[1]}", flush=True)
        try:
            server.serve_forever()
        except KeyboardInterrupt:
            sys.exit(0)


if __name__ == "__main__":
    main()
