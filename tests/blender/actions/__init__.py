"""What Blender does in the cases of the suite, by subject. An action gets the case and tells what a
user was told, and what else the test asks for."""
