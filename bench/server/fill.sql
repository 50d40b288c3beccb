-- Fills a shared archive: LOGGERS loggers with ten years of a record each 15 minutes from 2016 on, filed
-- week by week, one logger after the other, as consoles do. Run with psql -v loggers=LOGGERS.
\set ON_ERROR_STOP on
SET search_path = orvia;
SET synchronous_commit = off;

INSERT INTO settings(logger, image, firmware, analog_channels, pulse_channels, sample_on_demand,
    flow_decimals, velocity_decimals, equation_offset, equation_exponent, equation_multiplier, device)
  SELECT l, '', 0, 8, 2, 0, 0, 0, 0, 0, 0, '' FROM generate_series(1, :loggers) l;
INSERT INTO loggers(mac, name, records, uploads, revision)
  SELECT format('00:00:00:00:%s:%s', lpad(to_hex(l / 256), 2, '0'), lpad(to_hex(l % 256), 2, '0')),
         'Logger ' || l, 350640, 1, 1 FROM generate_series(1, :loggers) l;
INSERT INTO uploads(logger, begun, ended, outcome, firmware, name, settings, said, received)
  SELECT l, 1, 2, 'complete', 0, 'Logger ' || l, l, 350640, 350640 FROM generate_series(1, :loggers) l;

-- The packed time of each quarter of an hour.
CREATE TEMP TABLE quarters AS
  SELECT i, (((y - 2000) * 12 + mo - 1)::bigint << 22) | (d << 17) | (h << 12) | (mi << 6) AS time
  FROM (SELECT i, extract(year FROM t)::integer y, extract(month FROM t)::integer mo,
               extract(day FROM t)::integer d, extract(hour FROM t)::integer h,
               extract(minute FROM t)::integer mi
        FROM (SELECT i, timestamp '2016-01-01' + i * interval '15 minutes' t
              FROM generate_series(0, 350639) i) a) b;
CREATE INDEX ON quarters(i);
ANALYZE quarters;

-- Indexes are made when the rows are there.
DROP INDEX records_by_time;
DO $$
DECLARE
  part regclass;
BEGIN
  FOR part IN SELECT indexrelid::regclass FROM pg_index JOIN pg_class c ON c.oid = indexrelid
              WHERE relnamespace = 'orvia'::regnamespace AND relname LIKE 'records%by_place' LOOP
    EXECUTE format('DROP INDEX %s', part);
  END LOOP;
END
$$;
CREATE PROCEDURE pg_temp.fill(loggers integer) LANGUAGE plpgsql AS $$
BEGIN
  FOR week IN 0 .. 521 LOOP
    INSERT INTO records(place, time, logger, upload, nth, c1, c2, c3, c4, c5, c6, c7, c8, c9, c10)
      SELECT 4294967296 + q.i, q.time, l, l, 1, q.i & 65535, 7 * q.i & 65535, 30000 + l % 1000, 40000,
             50000, 60000, 1, 2, 3, q.i & 65535
      FROM generate_series(1, loggers) l, quarters q
      WHERE q.i >= week * 672 AND q.i < (week + 1) * 672 ORDER BY l, q.i;
    COMMIT;
  END LOOP;
END
$$;
CALL pg_temp.fill(:loggers);
CREATE INDEX records_by_time ON records(logger, time);
DO $$
DECLARE
  part text;
BEGIN
  FOR part IN SELECT relname FROM pg_class JOIN pg_inherits ON inhrelid = oid
              WHERE inhparent = 'orvia.records'::regclass LOOP
    EXECUTE format('CREATE UNIQUE INDEX %I ON orvia.%I(logger, place) INCLUDE (time)',
                   part || '_by_place', part);
  END LOOP;
END
$$;
VACUUM ANALYZE;
